#include "Platform/Linux/Qt/QtViews.h"
#include "Platform/Linux/Qt/QtWindow.h"
#include "tests/Platform/Linux/Qt/FormWindow.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QAccessible>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using platform::widgetOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::QtTestLoop;

/// Shows a line of text that is wider than the windows of these tests.
class WideController final : public platform::ViewController {
  public:
    explicit WideController(platform::Toolkit& toolkit) : toolkit_(toolkit) {}

    void loadView() override { setView(toolkit_.makeLabel(std::string(80, 'W'))); }

  private:
    platform::Toolkit& toolkit_;
};

class QtWindowTests : public testing::Test {
  protected:
    [[nodiscard]] static QWidget& frame() {
        return *testing_support::QtDesktop::widgetTitled("Form");
    }

    void show() {
        form_->window->makeKeyAndOrderFront();
        ASSERT_TRUE(desktop_.waitForFocus(frame()));
    }

    /// A property of the window, as xprop prints it.
    [[nodiscard]] std::string property(const std::string& name) const {
        return desktop_.output({"xprop", "-id", std::to_string(frame().winId()), name});
    }

    void closeWithTheKeyboard() {
        desktop_.keyboard().tapTogether({KEY_LEFTALT, KEY_F4});
        EXPECT_TRUE(QtTestLoop::turnUntil([this] {
            desktop_.nudgeWindowManager();
            return !form_->window->isVisible();
        }));
    }

    /// The notes, with consecutive layouts as one.
    [[nodiscard]] std::vector<std::string> notes() const {
        std::vector<std::string> notes = form_->notes;
        notes.erase(std::unique(notes.begin(), notes.end()), notes.end());
        return notes;
    }

    testing_support::QtDesktop desktop_;
    std::unique_ptr<FormWindow> form_ = std::make_unique<FormWindow>();
};

TEST_F(QtWindowTests, IsHiddenAtFirst) {
    EXPECT_FALSE(form_->window->isVisible());
    EXPECT_THAT(form_->notes, ElementsAre());
}

TEST_F(QtWindowTests, HasItsTitleAndTheContentSizeAskedFor) {
    show();
    EXPECT_EQ(frame().size(), QSize(400, 350));
    EXPECT_THAT(property("_NET_WM_NAME"), HasSubstr("\"Form\""));
    EXPECT_THAT(property("_NET_WM_WINDOW_TYPE"), HasSubstr("_NET_WM_WINDOW_TYPE_NORMAL"));
}

TEST_F(QtWindowTests, HasAFixedSize) {
    show();
    const std::string hints = property("WM_NORMAL_HINTS");
    EXPECT_THAT(hints, HasSubstr("minimum size: 400 by 350"));
    EXPECT_THAT(hints, HasSubstr("maximum size: 400 by 350"));
}

TEST_F(QtWindowTests, CanBeMovedAndClosedButNotMinimizedOrMaximized) {
    show();
    const std::string hints = property("_MOTIF_WM_HINTS");
    const std::size_t comma = hints.find(", ");
    ASSERT_NE(comma, std::string::npos) << hints;
    const unsigned long functions = std::strtoul(hints.c_str() + comma + 2, nullptr, 16);
    constexpr unsigned long all = 0x01;
    constexpr unsigned long move = 0x04;
    constexpr unsigned long minimize = 0x08;
    constexpr unsigned long maximize = 0x10;
    constexpr unsigned long close = 0x20;
    EXPECT_EQ(functions & (all | move | minimize | maximize | close), move | close) << hints;
}

TEST_F(QtWindowTests, IsCenteredOnTheScreen) {
    show();
    const QRect whole = frame().frameGeometry();
    const QRect screen = frame().screen()->availableGeometry();
    EXPECT_NEAR(whole.center().x(), screen.center().x(), 2);
    // The height of the title bar was a guess.
    EXPECT_NEAR(whole.center().y(), screen.center().y(), 10);
}

TEST_F(QtWindowTests, NotifiesItsControllerOfAppearingLayoutAndDisappearing) {
    show();
    EXPECT_THAT(notes(), ElementsAre("will appear", "did layout"));
    form_->notes.clear();
    form_->window->close();
    QtTestLoop::turn();
    EXPECT_FALSE(form_->window->isVisible());
    EXPECT_THAT(form_->notes, ElementsAre("did disappear"));
}

TEST_F(QtWindowTests, NotifiesItsControllerOfTheLayoutAfterATextHasChanged) {
    show();
    QtTestLoop::turn();
    form_->notes.clear();
    form_->shortcut->setText("A much longer text than before");
    EXPECT_TRUE(QtTestLoop::turnUntil([this] { return !form_->notes.empty(); }));
    EXPECT_THAT(notes(), ElementsAre("did layout"));
}

TEST_F(QtWindowTests, DoesNotAppearAgainWhileItIsVisible) {
    show();
    form_->notes.clear();
    show();
    EXPECT_THAT(form_->notes, testing::Each("did layout"));
}

TEST_F(QtWindowTests, DisappearsWhenTheUserClosesIt) {
    show();
    closeWithTheKeyboard();
    EXPECT_THAT(notes(), ElementsAre("will appear", "did layout", "did disappear"));
}

TEST_F(QtWindowTests, DisappearsOnlyOnceWhenItIsClosedTwice) {
    show();
    form_->window->close();
    form_->notes.clear();
    form_->window->close();
    QtTestLoop::turn();
    EXPECT_THAT(form_->notes, ElementsAre());
}

TEST_F(QtWindowTests, ReappearsWhereItWas) {
    show();
    const QRect before = frame().geometry();
    closeWithTheKeyboard();
    form_->notes.clear();
    show();
    EXPECT_THAT(notes(), ElementsAre("will appear", "did layout"));
    EXPECT_EQ(frame().geometry(), before);
}

TEST_F(QtWindowTests, ClosingItEndsNeitherItNorTheProgram) {
    show();
    QApplication::setQuitOnLastWindowClosed(true);
    QTimer::singleShot(0, &frame(), [this] { form_->window->close(); });
    constexpr int exitCode = 7;
    QTimer::singleShot(200, &frame(), [] { QApplication::exit(exitCode); });
    EXPECT_EQ(QApplication::exec(), exitCode);
    QApplication::setQuitOnLastWindowClosed(false);
    show();
}

TEST_F(QtWindowTests, EscapeDoesNotCloseIt) {
    show();
    int resetCount = 0;
    form_->onReset = [&] { ++resetCount; };
    desktop_.keyboard().tap(KEY_ESC);
    // Keys take effect in order. These press the second button.
    desktop_.keyboard().tap(KEY_TAB);
    desktop_.keyboard().tap(KEY_SPACE);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return resetCount == 1; }));
    EXPECT_TRUE(form_->window->isVisible());
}

TEST_F(QtWindowTests, TakesTheFocusFromAnotherProgram) {
    show();
    testing_support::ChildProcess other({"xev"}, {.environment = desktop_.session().environment()});
    ASSERT_TRUE(QtTestLoop::turnUntil([] { return !frame().isActiveWindow(); }));
    desktop_.keyboard().tap(KEY_A);
    ASSERT_TRUE(other.waitForOutput("KeyPress event"));
    show();
}

TEST_F(QtWindowTests, IsRestoredWhenItWasMinimized) {
    show();
    static_cast<void>(
        desktop_.output({"xdotool", "windowminimize", std::to_string(frame().winId())}));
    ASSERT_TRUE(QtTestLoop::turnUntil([] { return frame().isMinimized(); }));
    form_->notes.clear();
    show();
    EXPECT_FALSE(frame().isMinimized());
    EXPECT_THAT(form_->notes, testing::Not(testing::Contains("did disappear")));
}

TEST_F(QtWindowTests, IsCenteredEvenIfItsContentNeedsMoreThanTheSizeAskedFor) {
    platform::QtToolkit toolkit;
    WideController controller(toolkit);
    const auto window = toolkit.makeWindow({{0, 0}, {400, 350}}, {.isTitled = true}, {});
    window->setTitle("Wide");
    window->center();
    window->setContentViewController(controller);
    window->makeKeyAndOrderFront();
    const QWidget& widget = *testing_support::QtDesktop::widgetTitled("Wide");
    ASSERT_TRUE(desktop_.waitForFocus(widget));
    EXPECT_GT(widget.width(), 400);
    EXPECT_EQ(widget.width(), widgetOf(*controller.view()).sizeHint().width());
    EXPECT_NEAR(widget.frameGeometry().center().x(), widget.screen()->geometry().center().x(), 2);
}

TEST_F(QtWindowTests, GrowsWithItsContentWhileItIsShown) {
    show();
    form_->title->setText(std::string(80, 'W'));
    const int needed = widgetOf(*form_->title).sizeHint().width();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return frame().width() == needed + 40; }));
}

TEST_F(QtWindowTests, TabMovesTheFocusFromTopToBottom) {
    show();
    QWidget& record = widgetOf(*form_->record);
    QWidget& reset = widgetOf(*form_->reset);
    EXPECT_TRUE(record.hasFocus());
    desktop_.keyboard().tap(KEY_TAB);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return reset.hasFocus(); }));
    desktop_.keyboard().tap(KEY_TAB);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return record.hasFocus(); }));
    desktop_.keyboard().tapTogether({KEY_LEFTSHIFT, KEY_TAB});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return reset.hasFocus(); }));
}

TEST_F(QtWindowTests, BringingAllToTheFrontLeavesHiddenWindowsHidden) {
    platform::bringAllToFront();
    QtTestLoop::turn();
    EXPECT_FALSE(form_->window->isVisible());
}

TEST_F(QtWindowTests, LeavesTheContentToItsController) {
    show();
    form_->window.reset();
    EXPECT_EQ(testing_support::QtDesktop::widgetTitled("Form"), nullptr);
    EXPECT_EQ(form_->title->text(), "Keyboard Shortcut");
    EXPECT_EQ(widgetOf(*form_->stack).findChildren<QLabel*>().size(), 4);
}

TEST_F(QtWindowTests, ExposesItsTitleToAssistiveTechnology) {
    show();
    QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(&frame());
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->text(QAccessible::Name).toStdString(), "Form");
}

TEST_F(QtWindowTests, CanBeResizedIfItsStyleSaysSo) {
    auto resizable = form_->toolkit.makeWindow(
        {{10, 20}, {200, 100}},
        {.isTitled = true, .isClosable = true, .isMiniaturizable = true, .isResizable = true},
        {});
    resizable->setTitle("Resizable");
    resizable->makeKeyAndOrderFront();
    const QWidget& widget = *testing_support::QtDesktop::widgetTitled("Resizable");
    ASSERT_TRUE(desktop_.waitForFocus(widget));
    EXPECT_EQ(widget.size(), QSize(200, 100));
    EXPECT_GT(widget.maximumWidth(), 200);
    // The origin is relative to the lower left corner of the screen.
    EXPECT_NEAR(widget.frameGeometry().x(), 10, 2);
    EXPECT_NEAR(widget.geometry().bottom(), widget.screen()->geometry().bottom() - 20, 30);
}

} // namespace
