#import "Platform/MacOS/MacKeyDownMonitors.h"
#include "tests/Contract/KeyDownMonitorsContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

/// Has the keyboard focus and records what is typed.
@interface PWTestKeyView : NSView
@property(nonatomic) NSUInteger count;
@end

@implementation PWTestKeyView

- (BOOL)acceptsFirstResponder {
    return YES;
}

- (void)keyDown:(NSEvent*)event {
    ++self.count;
}

@end

namespace contract {

namespace {

class MacKeyDownMonitorsBackend final : public KeyDownMonitorsBackend {
  public:
    MacKeyDownMonitorsBackend() {
        window_.releasedWhenClosed = NO;
        window_.contentView = view_;
        [window_ makeKeyAndOrderFront:nil];
        [window_ makeFirstResponder:view_];
    }

    ~MacKeyDownMonitorsBackend() override { [window_ close]; }

    platform::KeyDownMonitors& monitors() override { return monitors_; }

    bool reachesTheWindow() override {
        view_.count = 0;
        [NSApp sendEvent:[NSEvent keyEventWithType:NSEventTypeKeyDown
                                                location:NSMakePoint(0, 0)
                                           modifierFlags:0
                                               timestamp:0
                                            windowNumber:window_.windowNumber
                                                 context:nil
                                              characters:@"g"
                             charactersIgnoringModifiers:@"g"
                                               isARepeat:NO
                                                 keyCode:carbonG]];
        return view_.count == 1;
    }

  private:
    testing_support::AppKitLoop loop_;
    platform::MacKeyDownMonitors monitors_;
    PWTestKeyView* const view_ = [[PWTestKeyView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
    NSWindow* const window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                          styleMask:NSWindowStyleMaskTitled
                                                            backing:NSBackingStoreBuffered
                                                              defer:NO];
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         KeyDownMonitorsContract,
                         (backend<KeyDownMonitorsBackend, MacKeyDownMonitorsBackend>("Mac")),
                         nameOfBackend<KeyDownMonitorsBackend>);

} // namespace contract
