#include "tests/Platform/Linux/Tray/TrayTest.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/PanelSession.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <QImage>
#include <algorithm>
#include <memory>
#include <string>

namespace {

using testing::ElementsAre;
using testing_support::ChildProcess;
using testing_support::PanelSession;

/// A status item in a real panel, which stands along the lower edge of a screen of 1280 x 800.
class PanelTests : public tray_test::TrayTest {
  protected:
    void startPanel(PanelSession::Appearance appearance = PanelSession::Appearance::light) {
        panel_ = std::make_unique<PanelSession>(session_, appearance);
    }

    /// What is on the screen in a rectangle such as "1280x20+0+775".
    QImage screen(const std::string& rectangle) {
        ChildProcess import({"import", "-window", "root", "-crop", rectangle, "png:-"},
                            {.environment = session_.environment()});
        EXPECT_EQ(import.waitForExit(), 0) << import.standardError();
        const std::string& picture = import.standardOutput();
        return QImage::fromData(reinterpret_cast<const uchar*>(picture.data()),
                                static_cast<int>(picture.size()));
    }

    /// The part of the panel that is not background; without width when there is none.
    QRect shownInPanel() {
        const QImage panel = screen("1280x28+0+770");
        const QRgb background = panel.pixel(panel.width() - 1, 0);
        QRect shown;
        for (int y = 0; y < panel.height(); ++y) {
            for (int x = 0; x < panel.width(); ++x) {
                if (panel.pixel(x, y) != background) {
                    shown |= QRect(x, y, 1, 1);
                }
            }
        }
        return shown;
    }

    /// One icon of 22 pixels, and nothing else.
    [[nodiscard]] bool waitForOneIcon() {
        return turnUntil([this] {
            const QRect shown = shownInPanel();
            return shown.width() >= 8 && shown.width() <= 22 && shown.height() <= 22;
        });
    }

    [[nodiscard]] bool waitForMenu(bool isOpen) {
        return turnUntil([this, isOpen] {
            // Above the icon's tooltip.
            const QImage above = screen("240x60+0+645");
            QImage uniform = above;
            uniform.fill(above.pixelColor(0, 0));
            return (above != uniform) == isOpen;
        });
    }

    void click(int button) {
        ChildProcess pointer({"xdotool", "mousemove", "12", "785", "click", std::to_string(button)},
                             {.environment = session_.environment()});
        EXPECT_TRUE(turnUntil([&] { return !pointer.isRunning(); }));
    }

    std::unique_ptr<PanelSession> panel_;
    testing_support::FakeKeyboard keyboard_{session_.display()};
};

TEST_F(PanelTests, TheIconShowsOnLightAndOnDark) {
    for (const auto appearance :
         {PanelSession::Appearance::light, PanelSession::Appearance::dark}) {
        startPanel(appearance);
        makeItem();
        ASSERT_TRUE(waitForOneIcon());
        const QImage icon = screen("24x24+0+772");
        const int background = qGray(screen("1x1+1279+772").pixel(0, 0));
        int distinctCount = 0;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                distinctCount += std::abs(qGray(icon.pixel(x, y)) - background) > 100 ? 1 : 0;
            }
        }
        EXPECT_GT(distinctCount, 25);
        item_.reset();
        panel_->stop();
    }
}

TEST_F(PanelTests, EitherButtonOpensTheMenuAndARowCanBeChosen) {
    startPanel();
    makeItem();
    ASSERT_TRUE(waitForOneIcon());
    ASSERT_TRUE(turnUntil([this] { return panel_->hasReadMenu(); }));
    int openings = 0;
    for (const int button : {1, 3}) {
        sample_.chosen.clear();
        click(button);
        ASSERT_TRUE(turnUntil([&] { return sample_.openingCount > openings; })) << button;
        ASSERT_TRUE(waitForMenu(true)) << button;
        keyboard_.tap(KEY_DOWN);
        keyboard_.tap(KEY_ENTER);
        ASSERT_TRUE(turnUntil([&] { return !sample_.chosen.empty(); })) << button;
        EXPECT_THAT(sample_.chosen, ElementsAre("clear"));
        EXPECT_EQ(sample_.openingCount, ++openings);
        ASSERT_TRUE(waitForMenu(false));
    }
}

TEST_F(PanelTests, TheIconAppearsInAPanelThatStartsLateAndInTheNextOne) {
    makeItem();
    QApplication::processEvents();
    startPanel();
    ASSERT_TRUE(waitForOneIcon());
    panel_->stop();
    QApplication::processEvents();
    panel_->start();
    EXPECT_TRUE(waitForOneIcon());
}

} // namespace
