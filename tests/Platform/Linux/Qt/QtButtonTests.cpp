#include "Platform/Linux/Qt/QtWidgetView.h"
#include "tests/Platform/Linux/Qt/FormWindow.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QPushButton>
#include <chrono>
#include <string>

namespace {

using namespace std::chrono_literals;
using testing_support::QtTestLoop;

class QtButtonTests : public testing::Test {
  protected:
    void show() {
        form_.onRecord = [this] { ++recordCount_; };
        form_.onReset = [this] { ++resetCount_; };
        form_.window->makeKeyAndOrderFront();
        ASSERT_TRUE(desktop_.waitForFocus(*testing_support::QtDesktop::widgetTitled("Form")));
    }

    [[nodiscard]] static QWidget& widgetOf(platform::View& view) {
        return platform::QtWidgetView::of(view).widget();
    }

    /// How opaque the record button is drawn.
    [[nodiscard]] double alpha() const {
        const auto* const effect =
            dynamic_cast<QGraphicsOpacityEffect*>(widgetOf(*form_.record).graphicsEffect());
        return effect == nullptr ? 1.0 : effect->opacity();
    }

    /// Presses the reset button and waits for its action: keys have their effect in order.
    void letKeysHaveTheirEffect() {
        const int before = resetCount_;
        widgetOf(*form_.reset).setFocus();
        desktop_.keyboard().tap(KEY_SPACE);
        ASSERT_TRUE(QtTestLoop::turnUntil([&] { return resetCount_ == before + 1; }));
    }

    testing_support::QtDesktop desktop_;
    FormWindow form_;
    int recordCount_ = 0;
    int resetCount_ = 0;
};

TEST_F(QtButtonTests, IsPressedBySpaceReturnAndEnterWhileItHasTheFocus) {
    show();
    int expected = 0;
    for (const int key : {KEY_SPACE, KEY_ENTER, KEY_KPENTER}) {
        ++expected;
        desktop_.keyboard().tap(key);
        EXPECT_TRUE(QtTestLoop::turnUntil([&] { return recordCount_ == expected; })) << key;
    }
    EXPECT_EQ(resetCount_, 0);
}

TEST_F(QtButtonTests, IsPressedByTheMouse) {
    show();
    const QWidget& button = widgetOf(*form_.record);
    const QPoint middle = button.mapToGlobal(button.rect().center());
    static_cast<void>(desktop_.output(
        {"xdotool", "mousemove", std::to_string(middle.x()), std::to_string(middle.y())}));
    desktop_.keyboard().pressButton(1);
    desktop_.keyboard().releaseButton(1);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return recordCount_ == 1; }));
}

TEST_F(QtButtonTests, IsPressedOnceByAKeyThatIsHeld) {
    show();
    int repeatCount = 0;

    // Sees the repetitions come in.
    class Counter final : public QObject {
      public:
        explicit Counter(int& count) : count_(count) {}

        bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
            count_ += event->type() == QEvent::KeyPress ? 1 : 0;
            return false;
        }

      private:
        int& count_;
    } counter(repeatCount);

    widgetOf(*form_.record).installEventFilter(&counter);
    desktop_.keyboard().press(KEY_ENTER);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return repeatCount >= 4; }));
    desktop_.keyboard().release(KEY_ENTER);
    letKeysHaveTheirEffect();
    EXPECT_EQ(recordCount_, 1);
}

TEST_F(QtButtonTests, ShowsAnAmpersandInItsTitle) {
    form_.record->setTitle("Cut & Paste");
    EXPECT_EQ(form_.record->title(), "Cut & Paste");
    const auto& button = dynamic_cast<QPushButton&>(widgetOf(*form_.record));
    EXPECT_EQ(button.text().toStdString(), "Cut && Paste");
    EXPECT_TRUE(button.shortcut().isEmpty());
}

TEST_F(QtButtonTests, IsReadToTheUserByItsTitle) {
    form_.record->setTitle("Stop & Go");
    QAccessibleInterface* const interface =
        QAccessible::queryAccessibleInterface(&widgetOf(*form_.record));
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Button);
    EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), "Stop & Go");
}

TEST_F(QtButtonTests, ChangesItsOpacityInTheCourseOfTheTime) {
    show();
    form_.record->animateAlpha(0.8, 200ms);
    EXPECT_GT(alpha(), 0.8);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return alpha() < 1.0 && alpha() > 0.8; }));
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return alpha() == 0.8; }));
}

TEST_F(QtButtonTests, IsDrawnWithoutAnyEffectOnceItIsOpaqueAgain) {
    show();
    form_.record->animateAlpha(0.8, 20ms);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return alpha() == 0.8; }));
    form_.record->animateAlpha(1.0, 20ms);
    EXPECT_TRUE(
        QtTestLoop::turnUntil([&] { return widgetOf(*form_.record).graphicsEffect() == nullptr; }));
}

TEST_F(QtButtonTests, HasNoEffectWhenItWasOpaqueAllAlong) {
    form_.record->animateAlpha(1.0, 200ms);
    EXPECT_EQ(widgetOf(*form_.record).graphicsEffect(), nullptr);
}

TEST_F(QtButtonTests, GoesBackFromWhereItIsInTheMiddleOfAnAnimation) {
    show();
    form_.record->animateAlpha(0.0, 400ms);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return alpha() < 0.7; }));
    const double present = alpha();
    form_.record->animateAlpha(1.0, 400ms);
    EXPECT_NEAR(alpha(), present, 0.05);
    EXPECT_TRUE(
        QtTestLoop::turnUntil([&] { return widgetOf(*form_.record).graphicsEffect() == nullptr; }));
}

TEST_F(QtButtonTests, ChangesAtOnceInNoTime) {
    form_.record->animateAlpha(0.5, 0ms);
    EXPECT_EQ(alpha(), 0.5);
}

} // namespace
