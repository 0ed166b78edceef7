#import "Platform/MacOS/MacAlerts.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>

/// A user who waits for an alert and answers it.
@interface PWTestUser : NSObject
/// Of the button that the user presses; nil ends the alert without an answer.
@property(nonatomic, copy) NSString* title;
/// Of the alert that was answered.
@property(nonatomic, copy) NSString* shownTexts;
@end

@implementation PWTestUser {
    std::atomic<bool> _hasAnswered;
}

/// In a thread of its own: the loop that waits for an answer looks for one only after something
/// came from outside, which a timer does not.
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

- (NSString*)textsIn:(NSView*)view {
    NSMutableString* const texts = [NSMutableString string];
    if ([view isKindOfClass:[NSTextField class]]) {
        [texts appendFormat:@"%@\n", static_cast<NSTextField*>(view).stringValue];
    }
    for (NSView* subview in view.subviews) {
        [texts appendString:[self textsIn:subview]];
    }
    return texts;
}

@end

namespace {

class MacAlertsTests : public testing::Test {
  protected:
    std::optional<std::size_t> answerWith(NSString* title) {
        user_ = [[PWTestUser alloc] init];
        user_.title = title;
        [NSThread detachNewThreadSelector:@selector(watch) toTarget:user_ withObject:nil];
        return platform::MacAlerts().runModal({.messageText = "What now?",
                                               .informativeText = "Nobody knows.",
                                               .style = platform::AlertStyle::informational,
                                               .buttonTitles = {"Go on", "Wait", "Leave"}});
    }

    [[nodiscard]] std::string shownTexts() const { return user_.shownTexts.UTF8String; }

    testing_support::AppKitLoop loop_;

  private:
    PWTestUser* user_ = nil;
};

TEST_F(MacAlertsTests, TellsWhichButtonWasPressed) {
    EXPECT_EQ(answerWith(@"Go on"), 0U);
    EXPECT_EQ(answerWith(@"Wait"), 1U);
    EXPECT_EQ(answerWith(@"Leave"), 2U);
}

TEST_F(MacAlertsTests, KnowsNoButtonWhereTheAlertWentAwayWithoutOne) {
    EXPECT_EQ(answerWith(nil), std::nullopt);
}

TEST_F(MacAlertsTests, ShowsBothTexts) {
    answerWith(@"Wait");
    EXPECT_NE(shownTexts().find("What now?\n"), std::string::npos) << shownTexts();
    EXPECT_NE(shownTexts().find("Nobody knows.\n"), std::string::npos) << shownTexts();
}

} // namespace
