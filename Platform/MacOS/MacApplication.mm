#import "Platform/MacOS/MacApplication.h"

#import <AppKit/AppKit.h>

#include <utility>

@interface PWApplicationDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic) std::function<void()> launch;
@property(nonatomic) std::function<void()> reopen;
@end

@implementation PWApplicationDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    self.launch();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
    self.reopen();
    return NO;
}

@end

namespace platform {

void MacApplication::setRequests(Requests requests) {
    requests_ = std::move(requests);
    if (std::exchange(hasWaitingReopen_, false)) {
        reopen();
    }
}

void MacApplication::activateIgnoringOtherApps() {
    [NSApp activateIgnoringOtherApps:YES];
}

void MacApplication::terminate() {
    [NSApp terminate:nil];
}

void MacApplication::run(const std::function<void()>& didFinishLaunching) {
    // The system refers to its delegate weakly.
    __attribute__((objc_precise_lifetime)) PWApplicationDelegate* const delegate =
        [[PWApplicationDelegate alloc] init];
    delegate.launch = didFinishLaunching;
    delegate.reopen = [this] { reopen(); };
    NSApp.delegate = delegate;
    [NSApp run];
    NSApp.delegate = nil;
}

void MacApplication::reopen() {
    if (requests_.openPreferences) {
        requests_.openPreferences();
    } else {
        hasWaitingReopen_ = true;
    }
}

} // namespace platform
