#import "Platform/MacOS/MacConversions.h"
#import "Platform/MacOS/MacPermissions.h"
#include "tests/Contract/AlertsContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <atomic>

/// A user who waits for an alert and answers it.
@interface PWTestUser : NSObject
/// The title of the button to press; nil closes the alert without an answer.
@property(nonatomic, copy) NSString* title;
/// The texts of the answered alert.
@property(nonatomic, copy) NSArray<NSString*>* shownTexts;
@end

@implementation PWTestUser {
    std::atomic<bool> _hasAnswered;
}

/// Runs in a thread of its own: the modal loop checks for an answer only after an event from
/// outside, and a timer is not one.
- (void)watch {
    @autoreleasepool {
        while (!_hasAnswered) {
            [NSThread sleepForTimeInterval:0.01];
            [self performSelectorOnMainThread:@selector(look)
                                   withObject:nil
                                waitUntilDone:YES
                                        modes:@[ NSModalPanelRunLoopMode ]];
        }
    }
}

- (void)look {
    NSWindow* const window = [NSApp modalWindow];
    if (window == nil) {
        return;
    }
    _hasAnswered = true;
    self.shownTexts = [self textsIn:window.contentView];
    NSButton* const button = [self buttonIn:window.contentView];
    if (button != nil) {
        [button performClick:nil];
    } else {
        [NSApp abortModal];
    }
    [NSApp postEvent:[NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:window.windowNumber
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:NO];
}

- (NSButton*)buttonIn:(NSView*)view {
    if ([view isKindOfClass:[NSButton class]] &&
        [static_cast<NSButton*>(view).title isEqualToString:self.title]) {
        return static_cast<NSButton*>(view);
    }
    for (NSView* subview in view.subviews) {
        if (NSButton* const button = [self buttonIn:subview]) {
            return button;
        }
    }
    return nil;
}

- (NSArray<NSString*>*)textsIn:(NSView*)view {
    NSMutableArray<NSString*>* const texts = [NSMutableArray array];
    if ([view isKindOfClass:[NSTextField class]]) {
        [texts addObject:static_cast<NSTextField*>(view).stringValue];
    }
    for (NSView* subview in view.subviews) {
        [texts addObjectsFromArray:[self textsIn:subview]];
    }
    return texts;
}

@end

namespace contract {

namespace {

class MacAlertsBackend final : public AlertsBackend {
  public:
    platform::Alerts& alerts() override { return alerts_; }

    void answerNext(std::optional<std::size_t> buttonIndex) override {
        user_ = [[PWTestUser alloc] init];
        user_.title =
            buttonIndex ? platform::nsString(question.buttonTitles.at(*buttonIndex)) : nil;
        [NSThread detachNewThreadSelector:@selector(watch) toTarget:user_ withObject:nil];
    }

    std::vector<std::string> shownTexts() override {
        std::vector<std::string> texts;
        for (NSString* text in user_.shownTexts) {
            texts.emplace_back(text.UTF8String);
        }
        return texts;
    }

  private:
    testing_support::AppKitLoop loop_;
    platform::MacAlerts alerts_;
    PWTestUser* user_ = nil;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         AlertsContract,
                         (backend<AlertsBackend, MacAlertsBackend>("Mac")),
                         nameOfBackend<AlertsBackend>);

} // namespace contract
