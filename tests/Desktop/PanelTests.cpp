#include "tests/Desktop/ResidentTest.h"
#include "tests/Support/PanelSession.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <memory>
#include <optional>
#include <string>

namespace {

using program_test::Picture;
using program_test::ResidentTest;
using program_test::ScreenArea;
using testing_support::PanelSession;
using testing_support::waitUntil;

constexpr std::string_view openingMessage =
    "Menu about to open; refreshing content to prevent caching";

/// The lower part of the desktop, with the panel.
constexpr ScreenArea panelArea{.x = 0, .y = 768, .width = 1280, .height = 32};
constexpr ScreenArea deskArea{.x = 0, .y = 500, .width = 1280, .height = 268};
constexpr int leftButton = 1;
constexpr int rightButton = 3;

/// The program in the tray of a real panel, tested by pixels and clicks.
class PanelTests : public ResidentTest {
  protected:
    /// Starts the panel and the program, and finds its icon.
    void SetUp() override {
        tidyDesktop();
        panel_ = std::make_unique<PanelSession>(session_);
        emptyPanel_ = stillPanel();
        startProgram();
        std::optional<ScreenArea> icon;
        ASSERT_TRUE(waitUntil([&] {
            icon = stillPanel().difference(emptyPanel_);
            return icon.has_value();
        })) << "no icon comes; "
            << program_->standardError();
        icon_ = *icon;
    }

    /// The panel once two pictures of it are the same.
    Picture stillPanel() {
        Picture last = look(panelArea);
        EXPECT_TRUE(waitUntil([&] {
            Picture present = look(panelArea);
            const bool isStill = !present.difference(last);
            last = std::move(present);
            return isStill;
        }));
        return last;
    }

    /// Clicks on the icon and waits until the menu is complete.
    void openMenu(int button) {
        const Picture before = look(deskArea);
        const std::size_t openings = logged(openingMessage);
        ASSERT_TRUE(waitUntil([this] { return panel_->hasReadMenu(); }));
        clickAt(icon_.x + icon_.width / 2, icon_.y + icon_.height / 2, button);
        Picture last = before;
        ASSERT_TRUE(waitUntil([&] {
            Picture present = look(deskArea);
            const bool isStill = present.difference(before) && !present.difference(last);
            last = std::move(present);
            return isStill;
        })) << "no menu comes; "
            << program_->standardError();
        EXPECT_TRUE(waitForLog(openingMessage, openings + 1)) << program_->standardError();
        EXPECT_EQ(logged(openingMessage), openings + 1);
    }

    /// Chooses a row with the arrow keys, which skip disabled ones.
    void chooseByKeyboard(int row) {
        for (int i = 0; i < row; ++i) {
            keyboard_.tap(KEY_DOWN);
        }
        keyboard_.tap(KEY_ENTER);
    }

    std::unique_ptr<PanelSession> panel_;
    Picture emptyPanel_;
    ScreenArea icon_;
};

constexpr int preferencesRow = 2;
constexpr int quitRow = 3;

TEST_F(PanelTests, TheIconIsInThePanelAndFlashes) {
    EXPECT_LE(icon_.width, panelArea.height);
    EXPECT_LE(icon_.height, panelArea.height);
    takeScreenshot("tray.png", {.x = 0, .y = 736, .width = 256, .height = 64});
    const Picture usual = look(panelArea);
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitUntil([&] { return look(panelArea).difference(usual).has_value(); }));
    EXPECT_TRUE(waitUntil([&] { return !look(panelArea).difference(usual); }));
}

class PanelMenuTests : public PanelTests, public testing::WithParamInterface<int> {};

TEST_P(PanelMenuTests, AClickOpensTheMenuAndEscapeClosesIt) {
    const Picture before = look(deskArea);
    for (int i = 0; i < 2; ++i) {
        openMenu(GetParam());
        keyboard_.tap(KEY_ESC);
        EXPECT_TRUE(waitUntil([&] { return !look(deskArea).difference(before); }));
    }
    EXPECT_EQ(logged(openingMessage), 2U);
}

TEST_P(PanelMenuTests, TheMenuOpensThePreferences) {
    openMenu(GetParam());
    if (GetParam() == leftButton) { // The panel shows the same menu for either.
        takeScreenshot("menu.png", {.x = 0, .y = 560, .width = 320, .height = 240});
    }
    chooseByKeyboard(preferencesRow);
    EXPECT_TRUE(waitForPreferencesInFront()) << program_->standardError();
}

TEST_P(PanelMenuTests, TheMenuEndsTheProgram) {
    openMenu(GetParam());
    chooseByKeyboard(quitRow);
    EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
}

INSTANTIATE_TEST_SUITE_P(Each,
                         PanelMenuTests,
                         testing::Values(leftButton, rightButton),
                         [](const auto& button) {
                             return button.param == leftButton ? "Left" : "Right";
                         });

TEST_F(PanelTests, TheIconComesBackWithARestartedPanel) {
    panel_->stop();
    panel_->start();
    EXPECT_TRUE(waitUntil([this] { return stillPanel().difference(emptyPanel_).has_value(); }));
    openMenu(leftButton);
}

} // namespace
