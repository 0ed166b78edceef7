#import "Platform/MacOS/MacApplication.h"
#import "Platform/MacOS/MacViews.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using platform::LayoutConstraint;
using platform::MacViewNode;
using platform::Rect;
using Anchor = LayoutConstraint::Anchor;

class SmallViewController final : public platform::ViewController {
  public:
    explicit SmallViewController(platform::Toolkit& toolkit) : toolkit_(toolkit) {}

    void loadView() override { setView(toolkit_.makeView({{0, 0}, {40, 20}})); }

  private:
    platform::Toolkit& toolkit_;
};

class MacWindowTests : public testing::Test {
  protected:
    MacWindowTests() { window_->setTitle("Test"); }

    [[nodiscard]] PWWindow* nsWindow() const {
        for (NSWindow* window in [NSApp windows]) {
            if ([window.title isEqualToString:@"Test"] && [window isKindOfClass:[PWWindow class]]) {
                return static_cast<PWWindow*>(window);
            }
        }
        return nil;
    }

    BOOL press(NSString* key, NSEventModifierFlags modifiers) const {
        return
            [nsWindow() performKeyEquivalent:[NSEvent keyEventWithType:NSEventTypeKeyDown
                                                                    location:NSZeroPoint
                                                               modifierFlags:modifiers
                                                                   timestamp:0
                                                                windowNumber:nsWindow().windowNumber
                                                                     context:nil
                                                                  characters:key
                                                 charactersIgnoringModifiers:key
                                                                   isARepeat:NO
                                                                     keyCode:0]];
    }

    testing_support::AppKitLoop loop_;
    platform::MacToolkit toolkit_;
    SmallViewController controller_{toolkit_};
    std::unique_ptr<platform::Window> window_ = toolkit_.makeWindow(
        {{0, 0}, {400, 350}}, {.isTitled = true, .isClosable = true}, {.isDeferred = false});
};

TEST_F(MacWindowTests, KeepsItsPlaceWhenItGetsItsContent) {
    window_->center();
    const NSRect frame = nsWindow().frame;
    window_->setContentViewController(controller_);
    EXPECT_TRUE(NSEqualRects(nsWindow().frame, frame));
}

TEST_F(MacWindowTests, ClosesByCommandW) {
    window_->makeKeyAndOrderFront();
    EXPECT_TRUE(press(@"w", NSEventModifierFlagCommand));
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(MacWindowTests, ClosesByCommandWWithCapsLock) {
    window_->makeKeyAndOrderFront();
    EXPECT_TRUE(press(@"W", NSEventModifierFlagCommand | NSEventModifierFlagCapsLock));
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(MacWindowTests, StaysOpenForOtherKeys) {
    window_->makeKeyAndOrderFront();
    press(@"w", 0);
    press(@"w", NSEventModifierFlagCommand | NSEventModifierFlagOption);
    press(@"e", NSEventModifierFlagCommand);
    EXPECT_TRUE(window_->isVisible());
}

TEST_F(MacWindowTests, SaysWhenItHasNoKeyboard) {
    EXPECT_STRNE(nsWindow().subtitle.UTF8String, "");
    [nsWindow() becomeKeyWindow];
    EXPECT_STREQ(nsWindow().subtitle.UTF8String, "");
    [nsWindow() resignKeyWindow];
    EXPECT_STRNE(nsWindow().subtitle.UTF8String, "");
}

class MacWindowDeathTests : public MacWindowTests {
  protected:
    MacWindowDeathTests() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(MacWindowDeathTests, QuitsByCommandQ) {
    const auto run = [this] {
        platform::MacApplication application;
        application.run([this] { press(@"q", NSEventModifierFlagCommand); });
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST_F(MacWindowTests, AButtonCentredInAContainerGetsItsClicks) {
    const auto root = toolkit_.makeView({{0, 0}, {400, 200}});
    const auto container = toolkit_.makeView({});
    const auto button = toolkit_.makeButton("Record", {.name = "record", .perform = [] {}});
    root->addSubview(container);
    container->addSubview(button);
    container->setTranslatesAutoresizingMaskIntoConstraints(false);
    button->setTranslatesAutoresizingMaskIntoConstraints(false);
    toolkit_.activateConstraints({LayoutConstraint::equal(container, Anchor::top, root),
                                  LayoutConstraint::equal(container, Anchor::leading, root)});
    toolkit_.activateConstraints({LayoutConstraint::equal(button, Anchor::top, container),
                                  LayoutConstraint::equal(button, Anchor::bottom, container),
                                  LayoutConstraint::equal(button, Anchor::centerX, container),
                                  LayoutConstraint::atLeast(button, Anchor::width, 140)});
    root->layoutSubtreeIfNeeded();

    NSView* const nsButton = MacViewNode::nsView(*button);
    NSView* const nsRoot = MacViewNode::nsView(*root);
    [nsWindow().contentView addSubview:nsRoot];
    EXPECT_GE(nsButton.frame.size.width, 140);
    for (const double part : {0.1, 0.5, 0.9}) {
        const NSPoint inside = NSMakePoint(
            NSMinX(nsButton.bounds) + part * NSWidth(nsButton.bounds), NSMidY(nsButton.bounds));
        EXPECT_EQ([nsRoot hitTest:[nsButton convertPoint:inside toView:nsRoot]], nsButton) << part;
    }
}

} // namespace
