#include "Pastewise/PreferencesViewController.h"
#include "tests/Pastewise/PreferencesTest.h"
#include "tests/Pastewise/ViewOutline.h"
#include "tests/Support/CallOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using hotkey::ModifierFlags;
using pastewise::PreferencesViewController;
using pastewise::RecordingState;
using platform::MemoryButton;
using platform::TextColor;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace key_code = testing_support::key_code;

constexpr auto none = ModifierFlags{};
constexpr auto capsLock = ModifierFlags::capsLock;
constexpr auto shift = ModifierFlags::shift;
constexpr auto control = ModifierFlags::control;
constexpr auto option = ModifierFlags::option;
constexpr auto command = ModifierFlags::command;
constexpr auto function = ModifierFlags::function;

constexpr const char* readyText = "Ready to record - Click 'Record Shortcut' to begin";
constexpr const char* waitingText = "Waiting for input - Press any key combination";
constexpr const char* recordingText = "Recording... Press your desired shortcut now";
constexpr const char* completedText = "Shortcut recorded successfully!";

class PreferencesViewControllerTests : public testing_support::PreferencesTest {
  protected:
    void press(const std::shared_ptr<MemoryButton>& button) { button->press(); }

    /// Begins a recording and lets the time pass that it takes to be one.
    void record() {
        press(views().recordButton);
        mainQueue_.advance(100ms);
        ASSERT_EQ(controller_->currentState(), RecordingState::recording);
    }

    Views views() { return Views(*controller_); }

    std::string status() { return views().statusLabel->text(); }

    std::string shownShortcut() { return views().shortcutLabel->text(); }

    TextColor shortcutColor() { return views().shortcutLabel->textColor(); }

    /// What the label says of a stored object, whatever its type.
    std::pair<std::string, TextColor> shownFor(foundation::Value object) {
        userDefaults_.setObject(shortcutKey, std::move(object));
        return shownAnew();
    }

    /// What the label of a new controller says.
    std::pair<std::string, TextColor> shownAnew() {
        controller_ = makeController();
        return {shownShortcut(), shortcutColor()};
    }

    std::unique_ptr<PreferencesViewController> makeController() {
        return std::make_unique<PreferencesViewController>(
            toolkit_, keyDownMonitors_, mainQueue_, userDefaults_, shortcutManager_);
    }

    std::unique_ptr<PreferencesViewController> controller_ = makeController();
};

// What is shown

TEST_F(PreferencesViewControllerTests, IsLaidOutFromTopToBottom) {
    EXPECT_EQ(testing_support::outline(*controller_->view()),
              "view, frame 0 0 400 200\n"
              "  stack, spacing 12, insets 20 20 20 20, centred, by constraints\n"
              "    label \"Keyboard Shortcut\", bold 16\n"
              "    view\n"
              "      stack, spacing 8, centred, by constraints\n"
              "        label \"Current Shortcut:\", font 12, secondary, centred\n"
              "        label \"\u2318G\", bold 14, centred, by constraints\n"
              "    view\n"
              "      button \"Record Shortcut\" does toggleRecording, rounded, layer, hugging 750, "
              "by constraints\n"
              "    wrapping label \"Ready to record - Click 'Record Shortcut' to begin\", "
              "font 11, secondary, centred, lines 2, by constraints\n"
              "    button \"Reset to Default\" does resetShortcut, rounded\n");
}

TEST_F(PreferencesViewControllerTests, ConstrainsItsViewsInThreeGroups) {
    const Views shown = views();
    const testing_support::ViewNames names{{shown.root.get(), "root"},
                                           {shown.stack.get(), "stack"},
                                           {shown.shortcutContainer.get(), "display"},
                                           {shown.shortcutStack.get(), "displayStack"},
                                           {shown.buttonContainer.get(), "container"},
                                           {shown.recordButton.get(), "button"}};
    std::vector<std::vector<std::string>> groups;
    for (const auto& group : toolkit_.constraintGroups()) {
        groups.push_back(testing_support::lines(group, names));
    }
    EXPECT_THAT(groups,
                ElementsAre(ElementsAre("stack.top = root.top",
                                        "stack.leading = root.leading",
                                        "stack.trailing = root.trailing",
                                        "stack.bottom = root.bottom"),
                            ElementsAre("displayStack.top = display.top",
                                        "displayStack.leading = display.leading",
                                        "displayStack.trailing = display.trailing",
                                        "displayStack.bottom = display.bottom"),
                            ElementsAre("button.top = container.top",
                                        "button.bottom = container.bottom",
                                        "button.centerX = container.centerX",
                                        "button.width >= 140")));
}

TEST_F(PreferencesViewControllerTests, MakesItsViewsOnceOnFirstUse) {
    EXPECT_THAT(toolkit_.constraintGroups(), IsEmpty());
    const auto view = controller_->view();
    EXPECT_EQ(controller_->view(), view);
    EXPECT_EQ(toolkit_.constraintGroups().size(), 3U);
}

TEST_F(PreferencesViewControllerTests, StartsReady) {
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    EXPECT_EQ(mainQueue_.pendingCount(), 0U);
}

TEST_F(PreferencesViewControllerTests, ShowsTheTextsOfEachState) {
    const auto title = [this] { return views().recordButton->title(); };
    EXPECT_EQ(title(), "Record Shortcut");
    EXPECT_EQ(status(), readyText);
    press(views().recordButton);
    EXPECT_EQ(title(), "Stop Recording");
    EXPECT_EQ(status(), waitingText);
    mainQueue_.advance(100ms);
    EXPECT_EQ(title(), "Stop Recording");
    EXPECT_EQ(status(), recordingText);
    reachesWindow(key_code::k, command);
    EXPECT_EQ(title(), "Record New Shortcut");
    EXPECT_EQ(status(), completedText);
    mainQueue_.advance(1500ms);
    EXPECT_EQ(title(), "Record Shortcut");
    EXPECT_EQ(status(), readyText);
}

TEST_F(PreferencesViewControllerTests, DimsTheRecordButtonWhileRecording) {
    record();
    reachesWindow(key_code::k, command);
    mainQueue_.advance(1500ms);
    using Animation = MemoryButton::AlphaAnimation;
    EXPECT_THAT(views().recordButton->alphaAnimations(),
                ElementsAre(Animation{.alpha = 1.0, .duration = 200ms},   // loaded
                            Animation{.alpha = 1.0, .duration = 200ms},   // waiting
                            Animation{.alpha = 0.8, .duration = 200ms},   // recording
                            Animation{.alpha = 1.0, .duration = 200ms},   // completed
                            Animation{.alpha = 1.0, .duration = 200ms})); // ready
}

// From state to state

TEST_F(PreferencesViewControllerTests, ShowsEachStepOfARecordingInOrder) {
    static_cast<void>(views());
    journal_->clear();
    press(views().recordButton);
    EXPECT_THAT(journal_->calls(),
                ElementsAre("button Stop Recording",
                            std::string("label ") + waitingText,
                            "animate",
                            "queue 100 ms",
                            "add monitor"));
    journal_->clear();
    press(views().recordButton);
    EXPECT_THAT(journal_->calls(),
                ElementsAre("button Record Shortcut",
                            std::string("label ") + readyText,
                            "animate",
                            "remove monitor"));
    press(views().recordButton);
    journal_->clear();
    reachesWindow(key_code::k, command);
    EXPECT_THAT(journal_->calls(),
                ElementsAre("unregister 1",
                            "register 40 0x100 as QZhk 2",
                            "store userDefinedShortcut",
                            "read userDefinedShortcut",
                            "label \u2318K",
                            "remove monitor",
                            "button Record New Shortcut",
                            std::string("label ") + completedText,
                            "animate",
                            "queue 1500 ms"));
}

TEST_F(PreferencesViewControllerTests, ShowsAResetAndItsDisappearanceInOrder) {
    record();
    journal_->clear();
    press(views().resetButton);
    EXPECT_TRUE(testing_support::madeInOrder(*journal_,
                                             {"remove userDefinedShortcut",
                                              "store userDefinedShortcut",
                                              "label \u2318G",
                                              "remove monitor",
                                              "button Record Shortcut",
                                              "label Ready to record - Click 'Record Shortcut' to "
                                              "begin",
                                              "animate"}));
    record();
    journal_->clear();
    controller_->viewDidDisappear();
    EXPECT_THAT(journal_->calls(),
                ElementsAre("remove monitor",
                            "button Record Shortcut",
                            std::string("label ") + readyText,
                            "animate"));
}

TEST_F(PreferencesViewControllerTests, RecordsATenthOfASecondAfterTheButtonIsPressed) {
    press(views().recordButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::waiting);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 1U);
    mainQueue_.advance(99ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::waiting);
    mainQueue_.advance(1ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    mainQueue_.advance(1h);
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
}

TEST_F(PreferencesViewControllerTests, ReturnsToReadyWhenTheButtonIsPressedTwiceInATenthOfASecond) {
    press(views().recordButton);
    mainQueue_.advance(99ms);
    press(views().recordButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    const auto animations = views().recordButton->alphaAnimations().size();
    mainQueue_.advance(1s);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
    EXPECT_EQ(views().recordButton->alphaAnimations().size(), animations);
}

TEST_F(PreferencesViewControllerTests, StopsRecordingWhenTheButtonIsPressedAgain) {
    record();
    press(views().recordButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, AnEarlierTimerEndsALaterWait) {
    press(views().recordButton);
    mainQueue_.advance(40ms);
    press(views().recordButton);
    press(views().recordButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::waiting);
    mainQueue_.advance(60ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 1U);
}

TEST_F(PreferencesViewControllerTests, IsReadyOneAndAHalfSecondsAfterAShortcutWasRecorded) {
    record();
    reachesWindow(key_code::k, command);
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
    mainQueue_.advance(1499ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
    mainQueue_.advance(1ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
}

TEST_F(PreferencesViewControllerTests, RecordsAgainRightAfterAShortcutWasRecorded) {
    record();
    reachesWindow(key_code::k, command);
    mainQueue_.advance(1450ms);
    press(views().recordButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::waiting);
    mainQueue_.advance(50ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::waiting);
    mainQueue_.advance(50ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 1U);
}

TEST_F(PreferencesViewControllerTests, StopsRecordingWhenItDisappears) {
    record();
    controller_->viewDidDisappear();
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
    EXPECT_EQ(views().recordButton->alphaAnimations().back().alpha, 1.0);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
}

TEST_F(PreferencesViewControllerTests, IsReadyAgainWhenItDisappearsInAnyOtherState) {
    controller_->viewDidDisappear();
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);

    press(views().recordButton);
    controller_->viewDidDisappear();
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    mainQueue_.advance(100ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);

    record();
    reachesWindow(key_code::k, command);
    controller_->viewDidDisappear();
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
}

// Which keys are taken

TEST_F(PreferencesViewControllerTests, SwallowsALetterWithoutModifiers) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::g, none));
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(status(), recordingText);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 1U);
}

TEST_F(PreferencesViewControllerTests, IgnoresEscape) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::escape, none));
    EXPECT_FALSE(reachesWindow(key_code::escape, command));
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
    press(views().recordButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_TRUE(reachesWindow(key_code::escape, none));
}

TEST_F(PreferencesViewControllerTests, IgnoresTab) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::tab, command | shift));
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, IgnoresCommandAndLeftArrow) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::leftArrow, command | function));
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, IgnoresEveryKeyWithTheFunctionFlag) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::k, command | shift | function));
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, IgnoresAnUnknownKeyCode) {
    record();
    for (const std::uint32_t keyCode : {key_code::unused,
                                        platform::KeyEvent::noKeyCode,
                                        0x10005U,
                                        std::numeric_limits<std::uint32_t>::max()}) {
        EXPECT_FALSE(reachesWindow(keyCode, command)) << keyCode;
        EXPECT_EQ(controller_->currentState(), RecordingState::recording) << keyCode;
    }
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, IgnoresAKeyWithOnlyDeviceDependentFlags) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::k, {0x000000000000FFFF}));
    EXPECT_FALSE(reachesWindow(key_code::k, {0xFFFFFFFF00000000}));
    EXPECT_EQ(controller_->currentState(), RecordingState::recording);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, KeepsRecordingAfterAnIgnoredKey) {
    record();
    reachesWindow(key_code::g, none);
    reachesWindow(key_code::escape, command);
    EXPECT_FALSE(reachesWindow(key_code::k, command));
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x100000));
}

TEST_F(PreferencesViewControllerTests, SavesAndShowsCommandShiftK) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::k, command | shift));
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x120000));
    EXPECT_EQ(shownShortcut(), "\u2318\u21E7K");
    EXPECT_EQ(shortcutColor(), TextColor::label);
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
    EXPECT_THAT(hotKeyService_.registered(),
                ElementsAre(Pair(40U, hotkey::cmdKey | hotkey::shiftKey)));
    mainQueue_.advance(1500ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(shownShortcut(), "\u2318\u21E7K");
}

TEST_F(PreferencesViewControllerTests, SavesControlOption5AndShowsOnlyItsModifiers) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::five, control | option));
    EXPECT_EQ(savedShortcut(), shortcut(23, 0xC0000));
    EXPECT_EQ(shownShortcut(), "\u2325\u2303");
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
}

TEST_F(PreferencesViewControllerTests, AcceptsCapsLockAsAModifier) {
    record();
    EXPECT_FALSE(reachesWindow(key_code::k, capsLock));
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x10000));
    EXPECT_EQ(shownShortcut(), "K");
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
}

TEST_F(PreferencesViewControllerTests, SavesEveryDeviceIndependentFlag) {
    record();
    reachesWindow(key_code::k, {0xFFFFFFFF01310108});
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x01310000));
    EXPECT_EQ(shownShortcut(), "\u2318K");
}

TEST_F(PreferencesViewControllerTests, AcceptsAKeyPressedWhileWaiting) {
    press(views().recordButton);
    mainQueue_.advance(50ms);
    EXPECT_FALSE(reachesWindow(key_code::k, command));
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x100000));
    mainQueue_.advance(100ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::completed);
}

TEST_F(PreferencesViewControllerTests, SwallowsKeysOnlyWhileRecording) {
    static_cast<void>(controller_->view());
    EXPECT_TRUE(reachesWindow(key_code::k, command));
    press(views().recordButton);
    EXPECT_FALSE(reachesWindow(key_code::g, none));
    mainQueue_.advance(100ms);
    EXPECT_FALSE(reachesWindow(key_code::g, none));
    EXPECT_FALSE(reachesWindow(key_code::k, command));
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    EXPECT_TRUE(reachesWindow(key_code::g, option));
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x100000));
}

// Going back to the default

TEST_F(PreferencesViewControllerTests, ResetsToTheDefault) {
    record();
    reachesWindow(key_code::k, command | shift);
    press(views().resetButton);
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
    EXPECT_EQ(shownShortcut(), "\u2318G");
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
    EXPECT_THAT(hotKeyService_.registered(), ElementsAre(Pair(5U, hotkey::cmdKey)));
    mainQueue_.advance(1500ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
}

TEST_F(PreferencesViewControllerTests, IsReadyAfterAResetWhileWaiting) {
    press(views().recordButton);
    press(views().resetButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    mainQueue_.advance(100ms);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
}

TEST_F(PreferencesViewControllerTests, AResetEndsTheRecording) {
    record();
    press(views().resetButton);
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
    EXPECT_EQ(status(), readyText);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    EXPECT_TRUE(reachesWindow(key_code::k, command));
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
    EXPECT_EQ(controller_->currentState(), RecordingState::ready);
}

TEST_F(PreferencesViewControllerTests, RecordsAgainAfterAResetDuringARecording) {
    record();
    press(views().resetButton);
    record();
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 1U);
    reachesWindow(key_code::k, command);
    EXPECT_EQ(savedShortcut(), shortcut(40, 0x100000));
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
}

// Outlived by others

TEST_F(PreferencesViewControllerTests, AWaitingTimerDoesNothingOnceTheControllerIsGone) {
    press(views().recordButton);
    const Views shown = views();
    controller_.reset();
    EXPECT_EQ(mainQueue_.pendingCount(), 1U);
    mainQueue_.advance(100ms);
    EXPECT_EQ(shown.statusLabel->text(), waitingText);
}

TEST_F(PreferencesViewControllerTests, ACompletionTimerDoesNothingOnceTheControllerIsGone) {
    record();
    reachesWindow(key_code::k, command);
    const Views shown = views();
    controller_.reset();
    EXPECT_EQ(mainQueue_.pendingCount(), 1U);
    mainQueue_.advance(1500ms);
    EXPECT_EQ(shown.statusLabel->text(), completedText);
}

TEST_F(PreferencesViewControllerTests, TheMonitorOnlySwallowsOnceTheControllerIsGone) {
    record();
    controller_.reset();
    EXPECT_FALSE(reachesWindow(key_code::k, command));
    EXPECT_EQ(savedShortcut(), shortcut(5, 0x100000));
}

TEST_F(PreferencesViewControllerTests, ButtonsDoNothingOnceTheControllerIsGone) {
    const Views shown = views();
    controller_.reset();
    userDefaults_.removeObject(shortcutKey);
    press(shown.recordButton);
    press(shown.resetButton);
    EXPECT_EQ(keyDownMonitors_.monitorCount(), 0U);
    EXPECT_EQ(mainQueue_.pendingCount(), 0U);
    EXPECT_FALSE(savedShortcut().has_value());
}

// What is stored

TEST_F(PreferencesViewControllerTests, ShowsThatNoShortcutIsSet) {
    userDefaults_.removeObject(shortcutKey);
    EXPECT_THAT(shownAnew(), Pair("No shortcut set", TextColor::secondaryLabel));
}

TEST_F(PreferencesViewControllerTests, TreatsAValueOfAnotherTypeAsNoShortcut) {
    const auto nothing = Pair("No shortcut set", TextColor::secondaryLabel);
    EXPECT_THAT(shownFor(std::string("G")), nothing);
    EXPECT_THAT(shownFor(std::int64_t{5}), nothing);
    EXPECT_THAT(shownFor(true), nothing);
    EXPECT_THAT(shownFor(foundation::Other{}), nothing);
}

TEST_F(PreferencesViewControllerTests, TreatsAnIncompleteDictionaryAsNoShortcut) {
    using foundation::Dictionary;
    const auto nothing = Pair("No shortcut set", TextColor::secondaryLabel);
    EXPECT_THAT(shownFor(Dictionary{}), nothing);
    EXPECT_THAT(shownFor(Dictionary{{"keyCode", std::uint64_t{5}}}), nothing);
    EXPECT_THAT(shownFor(Dictionary{{"modifiers", std::uint64_t{0x100000}}}), nothing);
}

TEST_F(PreferencesViewControllerTests, TreatsNumbersOutOfRangeAsNoShortcut) {
    using foundation::Dictionary;
    using foundation::Value;
    const auto nothing = Pair("No shortcut set", TextColor::secondaryLabel);
    const Value command64{std::uint64_t{0x100000}};
    const Value g64{std::uint64_t{5}};
    for (const Value& keyCode : {Value(std::string("5")),
                                 Value(std::int64_t{-1}),
                                 Value(5.5),
                                 Value(std::numeric_limits<double>::quiet_NaN()),
                                 Value(std::uint64_t{65536}),
                                 Value(std::numeric_limits<std::uint64_t>::max())}) {
        EXPECT_THAT(shownFor(Dictionary{{"keyCode", keyCode}, {"modifiers", command64}}), nothing);
    }
    for (const Value& modifiers : {Value(std::string("1048576")),
                                   Value(std::int64_t{-1}),
                                   Value(1048576.5),
                                   Value(18446744073709551616.0)}) {
        EXPECT_THAT(shownFor(Dictionary{{"keyCode", g64}, {"modifiers", modifiers}}), nothing);
    }
}

TEST_F(PreferencesViewControllerTests, AcceptsIntegersOfEveryType) {
    using foundation::Dictionary;
    const auto shown = Pair("\u2318G", TextColor::label);
    EXPECT_THAT(shownFor(Dictionary{{"keyCode", std::int64_t{5}}, {"modifiers", 1048576.0}}),
                shown);
    EXPECT_THAT(shownFor(Dictionary{{"keyCode", 5.0}, {"modifiers", std::int64_t{0x100000}}}),
                shown);
    EXPECT_THAT(shownFor(shortcut(65535, 0x100000)), Pair("\u2318", TextColor::label));
    EXPECT_THAT(shownFor(shortcut(5, std::numeric_limits<std::uint64_t>::max())),
                Pair("\u2318\u2325\u21E7\u2303G", TextColor::label));
}

TEST_F(PreferencesViewControllerTests, ResetsTheColourOnceThereIsAShortcut) {
    userDefaults_.removeObject(shortcutKey);
    EXPECT_EQ(shortcutColor(), TextColor::secondaryLabel);
    press(views().resetButton);
    EXPECT_EQ(shownShortcut(), "\u2318G");
    EXPECT_EQ(shortcutColor(), TextColor::label);
}

// The display string

TEST(ShortcutDisplayStringTests, ShowsAllLetters) {
    const std::vector<std::pair<std::uint64_t, std::string>> letters{
        {0, "A"},  {11, "B"}, {8, "C"},  {2, "D"},  {14, "E"}, {3, "F"},  {5, "G"},
        {4, "H"},  {34, "I"}, {38, "J"}, {40, "K"}, {37, "L"}, {46, "M"}, {45, "N"},
        {31, "O"}, {35, "P"}, {12, "Q"}, {15, "R"}, {1, "S"},  {17, "T"}, {32, "U"},
        {9, "V"},  {13, "W"}, {7, "X"},  {16, "Y"}, {6, "Z"}};
    for (const auto& [keyCode, letter] : letters) {
        EXPECT_EQ(PreferencesViewController::shortcutDisplayString(keyCode, 0), letter);
        EXPECT_EQ(PreferencesViewController::shortcutDisplayString(keyCode, 0x100000),
                  "\u2318" + letter);
    }
}

TEST(ShortcutDisplayStringTests, ShowsNoOtherKey) {
    int nameless = 0;
    for (std::uint64_t keyCode = 0; keyCode <= 65535; ++keyCode) {
        nameless += PreferencesViewController::shortcutDisplayString(keyCode, 0).empty() ? 1 : 0;
    }
    EXPECT_EQ(nameless, 65536 - 26);
}

TEST(ShortcutDisplayStringTests, OrdersTheModifiers) {
    EXPECT_EQ(PreferencesViewController::shortcutDisplayString(5, 0x1E0000),
              "\u2318\u2325\u21E7\u2303G");
    EXPECT_EQ(PreferencesViewController::shortcutDisplayString(5, 0x80000), "\u2325G");
    EXPECT_EQ(PreferencesViewController::shortcutDisplayString(5, 0x20000), "\u21E7G");
    EXPECT_EQ(PreferencesViewController::shortcutDisplayString(5, 0x40000), "\u2303G");
    EXPECT_EQ(PreferencesViewController::shortcutDisplayString(5, 0x810000), "G");
}

TEST(ShortcutDisplayStringDeathTest, RejectsAKeyCodeOfMoreThan16Bits) {
    EXPECT_DEATH(static_cast<void>(PreferencesViewController::shortcutDisplayString(65536, 0)),
                 "the key code of a shortcut has more than 16 bits");
}

} // namespace
