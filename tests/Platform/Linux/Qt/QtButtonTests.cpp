#include "Platform/Linux/Qt/QtViews.h"
#include "tests/Platform/Linux/Qt/FormWindow.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPushButton>
#include <chrono>
#include <string>

namespace {

using namespace std::chrono_literals;
using platform::widgetOf;
using testing_support::QtTestLoop;

class QtButtonTests : public testing::Test {
  protected:
    void show() {
        form_.onRecord = [this] { ++recordCount_; };
        form_.onReset = [this] { ++resetCount_; };
        form_.window->makeKeyAndOrderFront();
        ASSERT_TRUE(desktop_.waitForFocus(*testing_support::QtDesktop::widgetTitled("Form")));
    }

    /// The opacity of the record button.
    [[nodiscard]] double alpha() const {
        return dynamic_cast<QGraphicsOpacityEffect&>(*widgetOf(*form_.record).graphicsEffect())
            .opacity();
    }

    testing_support::QtDesktop desktop_;
    FormWindow form_;
    int recordCount_ = 0;
    int resetCount_ = 0;
};

TEST_F(QtButtonTests, SpaceReturnAndEnterPressItWhileItHasTheFocus) {
    show();
    int expected = 0;
    for (const int key : {KEY_SPACE, KEY_ENTER, KEY_KPENTER}) {
        ++expected;
        desktop_.keyboard().tap(key);
        EXPECT_TRUE(QtTestLoop::turnUntil([&] { return recordCount_ == expected; })) << key;
    }
    EXPECT_EQ(resetCount_, 0);
}

TEST_F(QtButtonTests, AClickPressesIt) {
    show();
    const QWidget& button = widgetOf(*form_.record);
    const QPoint middle = button.mapToGlobal(button.rect().center());
    static_cast<void>(desktop_.output(
        {"xdotool", "mousemove", std::to_string(middle.x()), std::to_string(middle.y())}));
    desktop_.keyboard().pressButton(1);
    desktop_.keyboard().releaseButton(1);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return recordCount_ == 1; }));
}

TEST_F(QtButtonTests, AutomaticRepetitionsOfReturnDoNotPressIt) {
    show();
    for (const bool isAutoRepeat : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", isAutoRepeat);
        QCoreApplication::sendEvent(&widgetOf(*form_.record), &press);
    }
    EXPECT_EQ(recordCount_, 1);
}

TEST_F(QtButtonTests, ShowsAnAmpersandInItsTitle) {
    form_.record->setTitle("Cut & Paste");
    EXPECT_EQ(form_.record->title(), "Cut & Paste");
    const auto& button = dynamic_cast<QPushButton&>(widgetOf(*form_.record));
    EXPECT_EQ(button.text().toStdString(), "Cut && Paste");
    EXPECT_TRUE(button.shortcut().isEmpty());
}

TEST_F(QtButtonTests, ExposesItsTitleToAssistiveTechnology) {
    form_.record->setTitle("Stop & Go");
    QAccessibleInterface* const interface =
        QAccessible::queryAccessibleInterface(&widgetOf(*form_.record));
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Button);
    EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), "Stop & Go");
}

TEST_F(QtButtonTests, AnimatesItsOpacity) {
    show();
    form_.record->animateAlpha(0.8, 200ms);
    EXPECT_GT(alpha(), 0.8);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return alpha() < 1.0 && alpha() > 0.8; }));
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return alpha() == 0.8; }));
}

TEST_F(QtButtonTests, IsOpaqueAtFirst) {
    EXPECT_EQ(alpha(), 1.0);
}

TEST_F(QtButtonTests, ANewAnimationBeginsAtThePresentOpacity) {
    show();
    form_.record->animateAlpha(0.0, 400ms);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return alpha() < 0.7; }));
    const double present = alpha();
    form_.record->animateAlpha(1.0, 400ms);
    EXPECT_NEAR(alpha(), present, 0.05);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return alpha() == 1.0; }));
}

TEST_F(QtButtonTests, AnAnimationWithoutDurationEndsAtOnce) {
    form_.record->animateAlpha(0.5, 0ms);
    EXPECT_EQ(alpha(), 0.5);
}

} // namespace
