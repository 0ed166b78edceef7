#include "Platform/Linux/Qt/QtKeyDownMonitors.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11Modifiers.h"
#include "tests/Support/OtherX11Program.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using foundation::ObserverToken;
using platform::KeyEvent;
using testing::ElementsAre;
using testing::Pair;
using testing_support::QtTestLoop;

constexpr std::uint64_t capsLock = 0x10000;
constexpr std::uint64_t shift = 0x20000;
constexpr std::uint64_t control = 0x40000;
constexpr std::uint64_t option = 0x80000;
constexpr std::uint64_t command = 0x100000;
constexpr std::uint64_t function = 0x800000;

constexpr std::uint32_t carbonF12 = 0x6F;
constexpr int mod3Index = 5;
constexpr int mod4Index = 6;

/// A window with a line to type into and a button.
class Form final : public QWidget {
  public:
    Form() {
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(&line);
        layout->addWidget(&button);
        connect(&button, &QPushButton::clicked, this, [this] { ++clickCount; });
    }

    QLineEdit line;
    QPushButton button{"Button"};
    int clickCount = 0;
    int releaseCount = 0;

  protected:
    void keyReleaseEvent(QKeyEvent* event) override {
        ++releaseCount;
        QWidget::keyReleaseEvent(event);
    }
};

/// Counts the presses and repetitions that reach the program while it exists, before anything can
/// swallow them.
class PressCounter final : public QObject {
  public:
    PressCounter() { QCoreApplication::instance()->installEventFilter(this); }

    [[nodiscard]] int count() const { return count_; }

    bool eventFilter(QObject* receiver, QEvent* event) override {
        count_ += receiver->isWindowType() && event->type() == QEvent::KeyPress ? 1 : 0;
        return false;
    }

  private:
    int count_ = 0;
};

class QtKeyDownMonitorsTests : public testing::Test {
  protected:
    void SetUp() override {
        form_.show();
        form_.activateWindow();
        ASSERT_TRUE(desktop_.waitForFocus(form_));
        form_.line.setFocus();
    }

    /// Adds a monitor that notes each press and swallows it.
    ObserverToken record() {
        return monitors_.addLocalMonitor([this](const KeyEvent& event) {
            presses_.emplace_back(event.keyCode, event.modifierFlags.rawValue);
            if (onPress_) {
                onPress_();
            }
            return std::optional<KeyEvent>();
        });
    }

    /// The presses noted so far. Keys take effect in order, so this waits for one more.
    std::vector<std::pair<std::uint32_t, std::uint64_t>> presses() {
        keyboard().tap(KEY_F12);
        EXPECT_TRUE(QtTestLoop::turnUntil(
            [this] { return !presses_.empty() && presses_.back().first == carbonF12; }));
        presses_.pop_back();
        return std::exchange(presses_, {});
    }

    /// Waits until the line holds the text.
    [[nodiscard]] bool lineSoonHolds(const std::string& text) const {
        return QtTestLoop::turnUntil([&] { return form_.line.text().toStdString() == text; });
    }

    /// Sends the window an event of the space bar, at a time in the server's milliseconds.
    void send(QEvent::Type type, quint64 time) {
        constexpr quint32 nativeSpace = KEY_SPACE + 8;
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, nativeSpace, ' ', 0, " ");
        event.setTimestamp(time);
        QCoreApplication::sendEvent(form_.windowHandle(), &event);
    }

    [[nodiscard]] testing_support::FakeKeyboard& keyboard() { return desktop_.keyboard(); }

    testing_support::QtDesktop desktop_;
    Form form_;
    std::unique_ptr<platform::X11Connection> connection_ = platform::X11Connection::open();
    platform::QtKeyDownMonitors monitors_{[this](std::uint32_t state) {
        return platform::X11Modifiers::query(*connection_).value().modifierFlags(state);
    }};
    std::vector<std::pair<std::uint32_t, std::uint64_t>> presses_;
    std::function<void()> onPress_;
};

TEST_F(QtKeyDownMonitorsTests, SeesALetterWithItsModifiers) {
    record();
    keyboard().tapTogether({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_K});
    keyboard().tapTogether({KEY_LEFTCTRL, KEY_LEFTALT, KEY_5});
    keyboard().tap(KEY_G);
    keyboard().tapTogether({KEY_RIGHTMETA, KEY_RIGHTCTRL, KEY_RIGHTALT, KEY_RIGHTSHIFT, KEY_G});
    EXPECT_THAT(presses(),
                ElementsAre(Pair(40, command | shift),
                            Pair(23, control | option),
                            Pair(5, 0),
                            Pair(5, command | control | option | shift)));
}

TEST_F(QtKeyDownMonitorsTests, SeesEscapeTabSpaceAndReturn) {
    record();
    keyboard().tap(KEY_ESC);
    keyboard().tap(KEY_TAB);
    keyboard().tapTogether({KEY_LEFTSHIFT, KEY_TAB});
    keyboard().tap(KEY_SPACE);
    keyboard().tap(KEY_ENTER);
    keyboard().tap(KEY_BACKSPACE);
    EXPECT_THAT(
        presses(),
        ElementsAre(
            Pair(53, 0), Pair(48, 0), Pair(48, shift), Pair(49, 0), Pair(36, 0), Pair(51, 0)));
    EXPECT_TRUE(form_.line.hasFocus());
}

TEST_F(QtKeyDownMonitorsTests, SetsTheFunctionFlagForArrowsFKeysAndNavigationKeys) {
    record();
    keyboard().tapTogether({KEY_LEFTMETA, KEY_LEFT});
    for (const int key : {KEY_RIGHT,
                          KEY_DOWN,
                          KEY_UP,
                          KEY_F5,
                          KEY_HOME,
                          KEY_END,
                          KEY_PAGEUP,
                          KEY_PAGEDOWN,
                          KEY_DELETE,
                          KEY_INSERT}) {
        keyboard().tap(key);
    }
    EXPECT_THAT(presses(),
                ElementsAre(Pair(123, command | function),
                            Pair(124, function),
                            Pair(125, function),
                            Pair(126, function),
                            Pair(96, function),
                            Pair(115, function),
                            Pair(119, function),
                            Pair(116, function),
                            Pair(121, function),
                            Pair(117, function),
                            Pair(114, function)));
}

TEST_F(QtKeyDownMonitorsTests, SetsNoFlagForKeypadKeysAloneRegardlessOfNumLock) {
    record();
    keyboard().tap(KEY_KP5);
    keyboard().tap(KEY_KPENTER);
    keyboard().tap(KEY_KPPLUS);
    keyboard().tap(KEY_NUMLOCK);
    keyboard().tap(KEY_KP5);
    keyboard().tapTogether({KEY_LEFTMETA, KEY_KP4});
    EXPECT_THAT(presses(),
                ElementsAre(Pair(87, 0), Pair(76, 0), Pair(69, 0), Pair(87, 0), Pair(86, command)));
}

TEST_F(QtKeyDownMonitorsTests, SetsTheCapsLockFlagWhileCapsLockIsOn) {
    record();
    keyboard().tap(KEY_CAPSLOCK);
    keyboard().tap(KEY_G);
    keyboard().tap(KEY_CAPSLOCK);
    keyboard().tap(KEY_G);
    EXPECT_THAT(presses(), ElementsAre(Pair(5, capsLock), Pair(5, 0)));
}

TEST_F(QtKeyDownMonitorsTests, IgnoresModifierKeys) {
    record();
    for (const int key : {KEY_LEFTSHIFT,
                          KEY_RIGHTCTRL,
                          KEY_LEFTALT,
                          KEY_LEFTMETA,
                          KEY_CAPSLOCK,
                          KEY_CAPSLOCK,
                          KEY_NUMLOCK,
                          KEY_NUMLOCK}) {
        keyboard().tap(key);
    }
    EXPECT_THAT(presses(), ElementsAre());
}

TEST_F(QtKeyDownMonitorsTests, AKeyWithoutACarbonCodeHasNoKeyCode) {
    form_.button.setFocus(); // The line would open its context menu.
    record();
    keyboard().tap(KEY_COMPOSE);
    EXPECT_THAT(presses(), ElementsAre(Pair(KeyEvent::noKeyCode, 0)));
}

TEST_F(QtKeyDownMonitorsTests, ASynthesizedPressHasNoKeyCode) {
    record();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_G, Qt::ControlModifier, "g");
    EXPECT_TRUE(QCoreApplication::sendEvent(form_.windowHandle(), &event));
    EXPECT_EQ(presses_.size(), 1U);
    EXPECT_EQ(presses_.at(0).first, KeyEvent::noKeyCode);
    EXPECT_EQ(form_.line.text(), "");
}

class QtKeyLayoutTests : public QtKeyDownMonitorsTests,
                         public testing::WithParamInterface<const char*> {};

TEST_P(QtKeyLayoutTests, IdentifiesKeysByTheirPlace) {
    desktop_.setLayout({GetParam()});
    record();
    keyboard().tapTogether({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_K});
    keyboard().tapTogether({KEY_LEFTMETA, KEY_Z});
    keyboard().tapTogether({KEY_LEFTCTRL, KEY_LEFTALT, KEY_5});
    keyboard().tap(KEY_102ND);
    EXPECT_THAT(
        presses(),
        ElementsAre(
            Pair(40, command | shift), Pair(6, command), Pair(23, control | option), Pair(10, 0)));
}

INSTANTIATE_TEST_SUITE_P(Layouts,
                         QtKeyLayoutTests,
                         testing::Values("us", "ru", "gr", "de"),
                         [](const auto& layout) { return std::string(layout.param); });

TEST_F(QtKeyDownMonitorsTests, DoesNotCountAltGrAsAModifier) {
    desktop_.setLayout({"de"});
    record();
    keyboard().tapTogether({KEY_RIGHTALT, KEY_E});
    EXPECT_THAT(presses(), ElementsAre(Pair(14, 0)));
}

TEST_F(QtKeyDownMonitorsTests, RecognizesSuperOnAnotherModifierBit) {
    testing_support::OtherX11Program(desktop_.session().display())
        .moveModifierKeys(mod4Index, mod3Index);
    record();
    keyboard().tapTogether({KEY_LEFTMETA, KEY_G});
    EXPECT_THAT(presses(), ElementsAre(Pair(5, command)));
}

TEST_F(QtKeyDownMonitorsTests, DistinguishesSuperFromAltIfBothAreMeta) {
    desktop_.setLayout({"us", "-option", "altwin:alt_super_win"});
    record();
    keyboard().tapTogether({KEY_LEFTALT, KEY_G});
    keyboard().tapTogether({KEY_LEFTMETA, KEY_G});
    desktop_.setLayout({"us", "-option", "-option", "altwin:meta_alt"});
    keyboard().tapTogether({KEY_LEFTALT, KEY_G});
    keyboard().tapTogether({KEY_LEFTMETA, KEY_G});
    EXPECT_THAT(presses(),
                ElementsAre(Pair(5, option), Pair(5, command), Pair(5, option), Pair(5, command)));
}

TEST_F(QtKeyDownMonitorsTests, FallsBackToQtsModifiers) {
    platform::QtKeyDownMonitors monitors;
    std::uint64_t flags = 0;
    const auto token = monitors.addLocalMonitor([&](const KeyEvent& event) {
        flags = event.modifierFlags.rawValue;
        return std::optional<KeyEvent>();
    });
    keyboard().tap(KEY_CAPSLOCK);
    keyboard().tapTogether({KEY_LEFTMETA, KEY_LEFTCTRL, KEY_LEFTALT, KEY_LEFTSHIFT, KEY_G});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] {
        return flags == (command | control | option | shift | capsLock);
    })) << std::hex
        << flags;
    monitors.removeMonitor(token);
}

TEST_F(QtKeyDownMonitorsTests, SwallowsPressesAndTheirReleases) {
    const auto token = record();
    form_.button.setFocus();
    keyboard().tap(KEY_SPACE);
    keyboard().tap(KEY_ENTER);
    keyboard().tap(KEY_TAB);
    form_.releaseCount = 0;
    EXPECT_EQ(presses().size(), 3U);
    EXPECT_TRUE(form_.button.hasFocus());
    EXPECT_EQ(form_.clickCount, 0);
    EXPECT_EQ(form_.releaseCount, 0);
    monitors_.removeMonitor(token);
    keyboard().tap(KEY_SPACE);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return form_.clickCount == 1; }));
}

TEST_F(QtKeyDownMonitorsTests, PassesOnAnEventThatTheHandlerReturns) {
    int count = 0;
    static_cast<void>(monitors_.addLocalMonitor([&](const KeyEvent& event) {
        ++count;
        return std::optional(event);
    }));
    keyboard().tap(KEY_A);
    keyboard().tapTogether({KEY_LEFTSHIFT, KEY_B});
    EXPECT_TRUE(lineSoonHolds("aB"));
    EXPECT_EQ(count, 2);
}

TEST_F(QtKeyDownMonitorsTests, CallsTheMonitorsInOrderUntilOneSwallows) {
    std::string notes;
    static_cast<void>(monitors_.addLocalMonitor([&](const KeyEvent& event) {
        notes += 'a';
        return std::optional(event);
    }));
    record();
    static_cast<void>(monitors_.addLocalMonitor([&](const KeyEvent& event) {
        notes += 'c';
        return std::optional(event);
    }));
    keyboard().tap(KEY_G);
    EXPECT_THAT(presses(), ElementsAre(Pair(5, 0)));
    EXPECT_EQ(notes, "aa");
    EXPECT_EQ(form_.line.text(), "");
}

TEST_F(QtKeyDownMonitorsTests, ComesBeforeTheShortcutsOfTheWindow) {
    QShortcut shortcut(QKeySequence("Ctrl+K"), &form_);
    int count = 0;
    QObject::connect(&shortcut, &QShortcut::activated, &form_, [&] { ++count; });
    const auto token = record();
    keyboard().tapTogether({KEY_LEFTCTRL, KEY_K});
    EXPECT_THAT(presses(), ElementsAre(Pair(40, control)));
    EXPECT_EQ(count, 0);
    monitors_.removeMonitor(token);
    keyboard().tapTogether({KEY_LEFTCTRL, KEY_K});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return count == 1; }));
}

TEST_F(QtKeyDownMonitorsTests, SeesTheRepetitionsOfAHeldKey) {
    record();
    keyboard().press(KEY_G);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return presses_.size() >= 4; }));
    keyboard().release(KEY_G);
    EXPECT_THAT(presses(), testing::Each(Pair(5, 0)));
}

TEST_F(QtKeyDownMonitorsTests, SwallowsRepetitionsAndReleaseEvenAfterTheMonitorIsRemoved) {
    const auto token = record();
    onPress_ = [&] { monitors_.removeMonitor(token); };
    form_.button.setFocus();
    keyboard().press(KEY_LEFTCTRL);
    keyboard().press(KEY_SPACE);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return presses_.size() == 1; }));

    const PressCounter repetitions;
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return repetitions.count() >= 4; }));
    keyboard().release(KEY_SPACE);
    keyboard().release(KEY_LEFTCTRL);
    keyboard().tap(KEY_TAB);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return form_.line.hasFocus(); }));
    EXPECT_EQ(presses_.size(), 1U);
    EXPECT_EQ(form_.clickCount, 0);
}

TEST_F(QtKeyDownMonitorsTests, AReleaseAndAPressOfTheSameTimeAreARepetition) {
    const auto token = record();
    onPress_ = [&] { monitors_.removeMonitor(token); };
    form_.button.setFocus();
    send(QEvent::KeyPress, 10);
    send(QEvent::KeyRelease, 20);
    send(QEvent::KeyPress, 20);
    send(QEvent::KeyRelease, 30);
    EXPECT_EQ(form_.clickCount, 0);
    send(QEvent::KeyPress, 40);
    send(QEvent::KeyRelease, 50);
    EXPECT_EQ(form_.clickCount, 1);
}

TEST_F(QtKeyDownMonitorsTests, SwallowsUnseenTheRepetitionsOfAKeyThatWasHeldAlready) {
    int returnCount = 0;
    QObject::connect(&form_.line, &QLineEdit::returnPressed, &form_, [&] {
        if (++returnCount == 1) {
            record();
        }
    });
    const PressCounter all;
    keyboard().press(KEY_ENTER);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return all.count() >= 4; }));
    keyboard().release(KEY_ENTER);
    EXPECT_THAT(presses(), ElementsAre());
    EXPECT_EQ(returnCount, 1);
    keyboard().tap(KEY_ENTER);
    EXPECT_THAT(presses(), ElementsAre(Pair(36, 0)));
}

TEST_F(QtKeyDownMonitorsTests, SwallowsUnseenTheRepetitionsOfAKeyThatAnEarlierMonitorSaw) {
    const auto token = record();
    keyboard().press(KEY_G);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return !presses_.empty(); }));
    monitors_.removeMonitor(token);
    record();
    presses_.clear();
    const PressCounter all;
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return all.count() >= 4; }));
    keyboard().release(KEY_G);
    EXPECT_THAT(presses(), ElementsAre());
    EXPECT_EQ(form_.line.text(), "");
}

TEST_F(QtKeyDownMonitorsTests, ARepetitionMayBeginWithAReleaseBeforeTheMonitor) {
    send(QEvent::KeyPress, 10);
    send(QEvent::KeyRelease, 20);
    record();
    send(QEvent::KeyPress, 20);
    send(QEvent::KeyRelease, 30);
    EXPECT_THAT(presses_, ElementsAre());
    send(QEvent::KeyPress, 40);
    EXPECT_THAT(presses_, ElementsAre(Pair(49, 0)));
}

TEST_F(QtKeyDownMonitorsTests, LeavesTheKeysOfAnOpenMenuToTheMenu) {
    record();
    QMenu menu;
    int chosenCount = 0;
    menu.addAction("Row", &form_, [&] { ++chosenCount; });
    menu.popup(form_.mapToGlobal(QPoint()));
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return menu.isVisible(); }));
    keyboard().tap(KEY_DOWN);
    keyboard().tap(KEY_ENTER);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return chosenCount == 1; }));
    EXPECT_THAT(presses(), ElementsAre());
    EXPECT_EQ(chosenCount, 1);
}

TEST_F(QtKeyDownMonitorsTests, PassesOnAKeyWhoseReleaseWentToAnotherWindow) {
    const auto token = record();
    keyboard().press(KEY_A);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return !presses_.empty(); }));
    monitors_.removeMonitor(token);
    {
        const testing_support::ChildProcess other(
            {"xev"}, {.environment = desktop_.session().environment()});
        ASSERT_TRUE(QtTestLoop::turnUntil([&] { return !form_.isActiveWindow(); }));
        keyboard().release(KEY_A);
    }
    ASSERT_TRUE(desktop_.waitForFocus(form_));
    keyboard().tap(KEY_A);
    EXPECT_TRUE(lineSoonHolds("a"));
}

TEST_F(QtKeyDownMonitorsTests, SeesNothingOnceItIsRemoved) {
    const auto token = record();
    monitors_.removeMonitor(token);
    monitors_.removeMonitor(token);
    keyboard().tap(KEY_A);
    EXPECT_TRUE(lineSoonHolds("a"));
    EXPECT_THAT(presses_, ElementsAre());
}

TEST_F(QtKeyDownMonitorsTests, SeesDeadKeysOneByOneWhileAButtonHasTheFocus) {
    desktop_.setLayout({"de"});
    form_.button.setFocus();
    record();
    keyboard().tap(KEY_EQUAL);
    keyboard().tap(KEY_E);
    EXPECT_THAT(presses(), ElementsAre(Pair(24, 0), Pair(14, 0)));
}

TEST_F(QtKeyDownMonitorsTests, SeesNoKeysOfOtherProgramsWindows) {
    record();
    testing_support::ChildProcess other({"xev"}, {.environment = desktop_.session().environment()});
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return !form_.isActiveWindow(); }));
    keyboard().tap(KEY_G);
    ASSERT_TRUE(other.waitForOutput("KeyRelease event"));
    QtTestLoop::turn();
    EXPECT_THAT(presses_, ElementsAre());
}

} // namespace
