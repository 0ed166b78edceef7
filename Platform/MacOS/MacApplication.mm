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

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)sender {
    return YES;
}

@end

namespace platform {

MacApplication::MacApplication() : delegate_([[PWApplicationDelegate alloc] init]) {
    [NSApplication sharedApplication].delegate = delegate_;
    delegate_.reopen = [this] { reopen(); };
}

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
    delegate_.launch = didFinishLaunching;
    [NSApp run];
}

void MacApplication::reopen() {
    if (requests_.openPreferences) {
        requests_.openPreferences();
    } else {
        hasWaitingReopen_ = true;
    }
}

} // namespace platform
