#include "Pastewise/PreferencesWindowController.h"
#include "tests/Pastewise/PreferencesTest.h"
#include "tests/Support/CallOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace {

using namespace std::chrono_literals;
using hotkey::ModifierFlags;
using pastewise::PreferencesWindowController;
using platform::MemoryWindow;
using testing::IsEmpty;

namespace key_code = testing_support::key_code;

class PreferencesWindowControllerTests : public testing_support::PreferencesTest {
  protected:
    MemoryWindow& window() { return *toolkit_.windows().at(0); }

    Views views() { return Views(*window().contentViewController()); }

    std::unique_ptr<PreferencesWindowController> controller_ =
        std::make_unique<PreferencesWindowController>(
            toolkit_, keyDownMonitors_, mainQueue_, userDefaults_, shortcutManager_);
};

TEST_F(PreferencesWindowControllerTests, MakesACenteredWindowOfAFixedSize) {
    ASSERT_EQ(toolkit_.windows().size(), 1U);
    EXPECT_EQ(window().contentRect(), (platform::Rect{{0, 0}, {400, 350}}));
    EXPECT_EQ(window().style(),
              (platform::WindowStyle{.isTitled = true,
                                     .isClosable = true,
                                     .isMiniaturizable = false,
                                     .isResizable = false}));
    EXPECT_EQ(window().backing(),
              (platform::WindowBacking{.isBuffered = true, .isDeferred = false}));
    EXPECT_EQ(window().title(), "Pastewise Preferences");
    EXPECT_TRUE(window().isCentered());
    EXPECT_FALSE(window().isVisible());
    EXPECT_TRUE(testing_support::madeInOrder(
        *toolkit_.journal(),
        {"make window", "title Pastewise Preferences", "center", "set content view controller"}));
}

TEST_F(PreferencesWindowControllerTests, FillsTheWindowWithThePreferences) {
    EXPECT_EQ(views().root->frame(), (platform::Rect{{0, 0}, {400, 350}}));
    EXPECT_EQ(views().shortcutLabel->text(), "\u2318G");
    EXPECT_EQ(toolkit_.constraintGroups().size(), 3U);
}

TEST_F(PreferencesWindowControllerTests, ShowsTheWindowInFrontWithTheFocus) {
    controller_->showWindow();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().keyAndFrontCount(), 1);
}

TEST_F(PreferencesWindowControllerTests, ShowsTheSameWindowEachTime) {
    controller_->showWindow();
    controller_->showWindow();
    window().close();
    controller_->showWindow();
    EXPECT_EQ(toolkit_.windows().size(), 1U);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().keyAndFrontCount(), 3);
}

TEST_F(PreferencesWindowControllerTests, StopsRecordingWhenTheWindowClosesAndReopensReady) {
    controller_->showWindow();
    views().recordButton->press();
    mainQueue_.advance(100ms);
    ASSERT_EQ(views().statusLabel->text(), "Recording... Press your desired shortcut now");
    ASSERT_EQ(keyDownMonitors_.monitorCount(), 1U);

    window().close();
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    EXPECT_TRUE(reachesWindow(key_code::k, ModifierFlags::command));

    controller_->showWindow();
    EXPECT_EQ(views().statusLabel->text(), "Ready to record - Click 'Record Shortcut' to begin");
    EXPECT_EQ(views().recordButton->title(), "Record Shortcut");
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesWindowControllerTests, DestroysItsWindow) {
    controller_->showWindow();
    const std::weak_ptr<platform::View> root = views().root;
    controller_.reset();
    EXPECT_THAT(toolkit_.windows(), IsEmpty());
    EXPECT_TRUE(root.expired());
}

TEST(PreferencesWindowControllerDeathTest, CannotBeMadeFromAnArchive) {
    EXPECT_DEATH(PreferencesWindowController::initWithCoder(),
                 "init\\(coder:\\) has not been implemented");
}

} // namespace
