#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "HotKey/HotKeysController.h"
#include "Pastewise/ShortcutManager.h"
#include "Platform/Memory/Journal.h"
#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using foundation::Dictionary;
using foundation::Value;
using hotkey::eventNotHandledErr;
using hotkey::Key;
using hotkey::ModifierFlags;
using hotkey::noErr;
using pastewise::ShortcutManager;
using platform::MemoryEventHotKeyService;
using testing::ElementsAre;
using testing::IsEmpty;
using Write = platform::MemoryUserDefaults::Write;

constexpr std::string_view shortcutKey = "userDefinedShortcut";
constexpr MemoryEventHotKeyService::Combination commandG{5, 0x100};
constexpr MemoryEventHotKeyService::Combination shiftCommandK{0x28, 0x300};

Dictionary shortcut(Value keyCode, Value modifiers) {
    return {{"keyCode", std::move(keyCode)}, {"modifiers", std::move(modifiers)}};
}

/// A shortcut with the types it is stored with.
Value storedShortcut(std::uint64_t keyCode, std::uint64_t modifiers) {
    return shortcut(keyCode, modifiers);
}

/// The same with the types that a system may return.
Dictionary signedShortcut(std::int64_t keyCode, std::int64_t modifiers) {
    return shortcut(keyCode, modifiers);
}

const Value storedCommandG = storedShortcut(5, 1048576);

class ShortcutManagerTests : public testing::Test {
  protected:
    ShortcutManagerTests() {
        center_.addObserver("shortcutChanged", [this](const auto& notification) {
            posted_.push_back(notification.object);
        });
    }

    /// Makes the manager as at the start of the program, in place of an earlier one.
    ShortcutManager& start() {
        manager_.reset();
        return manager_.emplace(controller_, defaults_, center_, loggers_);
    }

    /// The same with that value in the settings.
    ShortcutManager& startWith(Value stored) {
        defaults_.setObject(shortcutKey, std::move(stored));
        forgetWhatWasSaid();
        return start();
    }

    void forgetWhatWasSaid() {
        journal_->clear();
        sink_.clear();
        defaults_.clearWrites();
        posted_.clear();
    }

    void countPresses() {
        manager_->shortcutHandler = [this] { ++presses_; };
    }

    [[nodiscard]] std::string displayString() const {
        return ShortcutManager::currentShortcutDisplayString(defaults_);
    }

    void expectDefault() {
        EXPECT_THAT(service_.registered(), ElementsAre(commandG));
        EXPECT_EQ(defaults_.object(shortcutKey), storedCommandG);
        EXPECT_THAT(posted_, ElementsAre(Value("Command G")));
        EXPECT_EQ(displayString(), "Command G");
    }

    std::shared_ptr<platform::Journal> journal_ = std::make_shared<platform::Journal>();
    platform::MemoryMainQueue queue_;
    MemoryEventHotKeyService service_{journal_};
    hotkey::HotKeysController controller_{service_};
    platform::MemoryUserDefaults defaults_{journal_};
    foundation::NotificationCenter center_{queue_};
    platform::MemoryLogSink sink_{journal_};
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    /// The objects of all "shortcutChanged" notifications, oldest first.
    std::vector<std::optional<Value>> posted_;
    std::optional<ShortcutManager> manager_;
    int presses_ = 0;
};

// The start

TEST_F(ShortcutManagerTests, InstallsAndStoresTheDefaultAtTheFirstLaunch) {
    start();
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre(
            "debug: Initializing ShortcutManager",
            "debug: Loading saved shortcut",
            "debug: No saved shortcut found or invalid data - setting up default shortcut"));
    EXPECT_EQ(sink_.entries().at(0).category, "ShortcutManager");
    EXPECT_THAT(defaults_.writes(), ElementsAre(Write{std::string(shortcutKey), storedCommandG}));
    expectDefault();
}

TEST_F(ShortcutManagerTests, InstallsAndAnnouncesTheSavedShortcut) {
    startWith(storedShortcut(0x28, 0x120000));
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(0x28, 0x120000));
    EXPECT_THAT(posted_, ElementsAre(Value("\u21E7\u2318 K")));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Initializing ShortcutManager",
                            "debug: Loading saved shortcut",
                            "debug: Found saved shortcut - KeyCode: 40, Modifiers: 1179648",
                            "debug: Successfully created Key from carbon code",
                            "debug: Setting shortcut - Key: K, Modifiers: \u21E7\u2318",
                            "debug: Saved shortcut data: [\"keyCode\": 40, \"modifiers\": "
                            "1179648]"));
}

TEST_F(ShortcutManagerTests, ReadsTheStoredDefaultAsASavedShortcutAtTheNextStart) {
    start();
    forgetWhatWasSaid();
    start();
    EXPECT_THAT(service_.registered(), ElementsAre(commandG));
    EXPECT_THAT(posted_, ElementsAre(Value("\u2318 G")));
    EXPECT_EQ(sink_.messages().at(2),
              "debug: Found saved shortcut - KeyCode: 5, Modifiers: 1048576");
}

TEST_F(ShortcutManagerTests, ReadsIntegersOfAnyType) {
    startWith(signedShortcut(0x28, 0x120000));
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(0x28, 0x120000));
    startWith(shortcut(40.0, 1179648.0));
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(0x28, 0x120000));
}

TEST_F(ShortcutManagerTests, ReadsABooleanAsANumber) {
    startWith(shortcut(true, std::uint64_t{0x100000}));
    EXPECT_EQ(displayString(), "Command S") << "1 is the code of the key S";
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(1, 0x100000));
}

TEST_F(ShortcutManagerTests, InstallsTheDefaultAndLogsAnErrorForAnUnknownKeyCode) {
    startWith(storedShortcut(52, 0x100000));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Initializing ShortcutManager",
                            "debug: Loading saved shortcut",
                            "debug: Found saved shortcut - KeyCode: 52, Modifiers: 1048576",
                            "error: Failed to create Key from carbon code: 52"));
    EXPECT_EQ(sink_.entries().at(2).format, "Found saved shortcut - KeyCode: %u, Modifiers: %lu");
    EXPECT_EQ(sink_.entries().at(3).format, "Failed to create Key from carbon code: %u");
    expectDefault();
}

struct Invalid {
    const char* name;
    Value stored;
};

class InvalidShortcutTests : public ShortcutManagerTests,
                             public testing::WithParamInterface<Invalid> {};

TEST_P(InvalidShortcutTests, InstallsTheDefault) {
    defaults_.setObject(shortcutKey, GetParam().stored);
    EXPECT_EQ(displayString(), "Command G");
    start();
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre(
            "debug: Initializing ShortcutManager",
            "debug: Loading saved shortcut",
            "debug: No saved shortcut found or invalid data - setting up default shortcut"));
    expectDefault();
}

constexpr std::uint64_t k = 0x28;
constexpr std::uint64_t commandMask = 0x100000;

INSTANTIATE_TEST_SUITE_P(
    Stored,
    InvalidShortcutTests,
    testing::Values(
        Invalid{"EmptyDictionary", Dictionary{}},
        Invalid{"Text", "K"},
        Invalid{"Number", k},
        Invalid{"SomethingUnknown", foundation::Other{}},
        Invalid{"NoKeyCode", Dictionary{{"modifiers", commandMask}}},
        Invalid{"NoModifiers", Dictionary{{"keyCode", k}}},
        Invalid{"KeyCodeAsText", shortcut("40", commandMask)},
        Invalid{"NegativeKeyCode", shortcut(std::int64_t{-1}, commandMask)},
        Invalid{"KeyCodeBeyond32Bits", shortcut(std::uint64_t{4294967296}, commandMask)},
        Invalid{"SignedKeyCodeBeyond32Bits", shortcut(std::int64_t{4294967296}, commandMask)},
        Invalid{"KeyCodeWithFraction", shortcut(5.5, commandMask)},
        Invalid{"NegativeKeyCodeWithFraction", shortcut(-0.5, commandMask)},
        Invalid{"ModifiersAsText", shortcut(k, "1048576")},
        Invalid{"NegativeModifiers", shortcut(k, std::int64_t{-1})},
        Invalid{"ModifiersWithFraction", shortcut(k, 1048576.5)},
        Invalid{"ModifiersBeyond64Bits", shortcut(k, 18446744073709551616.0)}),
    [](const auto& instance) { return std::string(instance.param.name); });

// Changes

TEST_F(ShortcutManagerTests, InstallsStoresAndAnnouncesANewShortcut) {
    start();
    forgetWhatWasSaid();
    manager_->setShortcut(Key::k, ModifierFlags::command | ModifierFlags::shift);
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
    EXPECT_THAT(defaults_.writes(),
                ElementsAre(Write{std::string(shortcutKey), storedShortcut(0x28, 1179648)}));
    EXPECT_THAT(posted_, ElementsAre(Value("\u21E7\u2318 K")));
    EXPECT_EQ(displayString(), "Command + Shift K");
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Setting shortcut - Key: K, Modifiers: \u21E7\u2318",
                            "debug: Saved shortcut data: [\"keyCode\": 40, \"modifiers\": "
                            "1179648]"));
    EXPECT_EQ(sink_.entries().at(0).format, "Setting shortcut - Key: %s, Modifiers: %s");
    EXPECT_EQ(sink_.entries().at(1).format, "Saved shortcut data: %s");
}

TEST_F(ShortcutManagerTests, AnnouncesAChangeAfterStoringAndInstallingIt) {
    std::vector<std::string> shown;
    std::vector<MemoryEventHotKeyService::Combination> installed;
    center_.addObserver(pastewise::shortcutChanged, [&](const auto& /*notification*/) {
        shown.push_back(displayString());
        installed.push_back(service_.registered().at(0));
    });
    start();
    manager_->setShortcut(Key::k, ModifierFlags::command | ModifierFlags::shift);
    EXPECT_THAT(shown, ElementsAre("Command G", "Command + Shift K"));
    EXPECT_THAT(installed, ElementsAre(commandG, shiftCommandK));
}

TEST_F(ShortcutManagerTests, UnregistersTheOldCombinationBeforeRegisteringTheNewOne) {
    start();
    forgetWhatWasSaid();
    manager_->setShortcut(Key::g, ModifierFlags::command);
    EXPECT_THAT(journal_->calls(),
                ElementsAre("log debug: Setting shortcut - Key: G, Modifiers: \u2318",
                            "unregister 1",
                            "register 5 0x100 as QZhk 2",
                            "store userDefinedShortcut",
                            "log debug: Saved shortcut data: [\"keyCode\": 5, \"modifiers\": "
                            "1048576]"));
    forgetWhatWasSaid();
    manager_->clearShortcut();
    EXPECT_THAT(journal_->calls(),
                ElementsAre("log debug: Clearing shortcut",
                            "unregister 2",
                            "remove userDefinedShortcut",
                            "register 5 0x100 as QZhk 3",
                            "store userDefinedShortcut"));
}

TEST_F(ShortcutManagerTests, AnnouncesANewShortcutAfterLoggingThatItIsSaved) {
    start();
    std::string lastMessage;
    center_.addObserver(pastewise::shortcutChanged, [&](const auto& /*notification*/) {
        lastMessage = sink_.messages().back();
    });
    manager_->setShortcut(Key::g, ModifierFlags::command);
    EXPECT_EQ(lastMessage, "debug: Saved shortcut data: [\"keyCode\": 5, \"modifiers\": 1048576]");
}

TEST_F(ShortcutManagerTests, KeepsEveryBitOfTheModifiers) {
    constexpr std::uint64_t bits = 0x8000000000000000 | 0x800000 | 0x120000 | 0x10000 | 0x108;
    start().setShortcut(Key::k, {bits});
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(0x28, bits));
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
    EXPECT_EQ(posted_.back(), Value("\u21E7\u2318 K"));
    forgetWhatWasSaid();
    start();
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(0x28, bits));
    EXPECT_EQ(sink_.messages().at(2),
              "debug: Found saved shortcut - KeyCode: 40, Modifiers: 9223372036864409864");
    EXPECT_EQ(displayString(), "Command + Shift K");
}

TEST_F(ShortcutManagerTests, AnnouncesAKeyWithoutModifiersAfterASpace) {
    start();
    forgetWhatWasSaid();
    manager_->setShortcut(Key::f5, {});
    EXPECT_THAT(posted_, ElementsAre(Value(" \uF860F5")));
    EXPECT_EQ(sink_.messages().at(0), "debug: Setting shortcut - Key: \uF860F5, Modifiers: ");
}

TEST_F(ShortcutManagerTests, ClearingInstallsAndStoresTheDefault) {
    startWith(storedShortcut(0x28, 0x120000));
    forgetWhatWasSaid();
    manager_->clearShortcut();
    EXPECT_THAT(defaults_.writes(),
                ElementsAre(Write{std::string(shortcutKey), std::nullopt},
                            Write{std::string(shortcutKey), storedCommandG}));
    EXPECT_THAT(sink_.messages(), ElementsAre("debug: Clearing shortcut"));
    expectDefault();
}

TEST_F(ShortcutManagerTests, KeepsACombinationThatTheSystemRefuses) {
    start();
    countPresses();
    service_.refuseRegistrations(hotkey::eventHotKeyExistsErr);
    forgetWhatWasSaid();
    manager_->setShortcut(Key::k, ModifierFlags::command | ModifierFlags::shift);
    EXPECT_THAT(service_.registered(), IsEmpty());
    EXPECT_EQ(defaults_.object(shortcutKey), storedShortcut(0x28, 0x120000));
    EXPECT_THAT(posted_, ElementsAre(Value("\u21E7\u2318 K")));
    EXPECT_EQ(displayString(), "Command + Shift K");
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Setting shortcut - Key: K, Modifiers: \u21E7\u2318",
                            "debug: Saved shortcut data: [\"keyCode\": 40, \"modifiers\": "
                            "1179648]"));
    EXPECT_EQ(service_.press(shiftCommandK), eventNotHandledErr);
    EXPECT_EQ(service_.press(commandG), eventNotHandledErr);
    EXPECT_EQ(presses_, 0);
}

TEST_F(ShortcutManagerTests, AnnouncesTheDefaultEvenIfAnotherProgramHasIt) {
    service_.takeElsewhere(commandG);
    start();
    EXPECT_THAT(service_.registered(), IsEmpty());
    EXPECT_EQ(defaults_.object(shortcutKey), storedCommandG);
    EXPECT_THAT(posted_, ElementsAre(Value("Command G")));
    for (const auto& entry : sink_.entries()) {
        EXPECT_EQ(entry.level, foundation::LogLevel::debug) << entry.whole;
    }
}

TEST_F(ShortcutManagerTests, RetriesACombinationThatTheSystemRefused) {
    service_.takeElsewhere(commandG);
    start();
    countPresses();
    service_.giveBackElsewhere(commandG);
    EXPECT_THAT(service_.registered(), IsEmpty());
    forgetWhatWasSaid();
    manager_->retry();
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(presses_, 1);
    EXPECT_THAT(posted_, IsEmpty());
}

// Presses

TEST_F(ShortcutManagerTests, CallsTheHandlerWithinEachPressAndNotOnRelease) {
    start();
    countPresses();
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(presses_, 1);
    EXPECT_EQ(service_.release(commandG), eventNotHandledErr);
    EXPECT_EQ(presses_, 1);
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(presses_, 2);
}

TEST_F(ShortcutManagerTests, LogsPressesOnlyOfAShortcutThatWasSet) {
    start();
    countPresses();
    forgetWhatWasSaid();
    service_.press(commandG);
    EXPECT_THAT(sink_.messages(), IsEmpty());

    manager_->setShortcut(Key::k, ModifierFlags::command | ModifierFlags::shift);
    forgetWhatWasSaid();
    service_.press(shiftCommandK);
    EXPECT_THAT(sink_.messages(), ElementsAre("debug: Shortcut triggered"));
    EXPECT_EQ(presses_, 2);

    manager_->clearShortcut();
    forgetWhatWasSaid();
    service_.press(commandG);
    EXPECT_THAT(sink_.messages(), IsEmpty());
    EXPECT_EQ(presses_, 3);
}

TEST_F(ShortcutManagerTests, LogsAPressBeforeCallingTheHandler) {
    start().setShortcut(Key::g, ModifierFlags::command);
    std::string lastMessage;
    manager_->shortcutHandler = [&] { lastMessage = sink_.messages().back(); };
    service_.press(commandG);
    EXPECT_EQ(lastMessage, "debug: Shortcut triggered");
}

TEST_F(ShortcutManagerTests, IgnoresAPressWithoutAHandler) {
    start();
    EXPECT_EQ(service_.press(commandG), noErr);
    manager_->setShortcut(Key::g, ModifierFlags::command);
    forgetWhatWasSaid();
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_THAT(sink_.messages(), ElementsAre("debug: Shortcut triggered"));
}

TEST_F(ShortcutManagerTests, KeepsTheHandlerWhenTheShortcutChanges) {
    start();
    countPresses();
    manager_->setShortcut(Key::k, ModifierFlags::command | ModifierFlags::shift);
    service_.press(shiftCommandK);
    service_.press(commandG);
    EXPECT_EQ(presses_, 1);
}

TEST_F(ShortcutManagerTests, UnregistersTheCombinationWhenDestroyed) {
    start();
    countPresses();
    manager_.reset();
    EXPECT_THAT(service_.registered(), IsEmpty());
    EXPECT_EQ(service_.press(commandG), eventNotHandledErr);
    EXPECT_EQ(presses_, 0);
}

// What the handler captures is too long to lie within the function object itself, so that a
// sanitizer notices when a handler that runs is destroyed under itself.

const std::string longMark = "a mark that is too long for the handler itself";

TEST_F(ShortcutManagerTests, TheHandlerMaySetTheShortcut) {
    start().setShortcut(Key::g, ModifierFlags::command);
    std::string marks;
    manager_->shortcutHandler = [this, &marks, mark = longMark] {
        manager_->setShortcut(Key::k, ModifierFlags::command | ModifierFlags::shift);
        marks += mark;
    };
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(marks, longMark);
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
    EXPECT_EQ(service_.press(shiftCommandK), noErr);
    EXPECT_EQ(marks, longMark + longMark);
    EXPECT_THAT(service_.registered(), ElementsAre(shiftCommandK));
}

TEST_F(ShortcutManagerTests, TheHandlerMayClearTheShortcut) {
    startWith(storedShortcut(0x28, 0x120000));
    std::string marks;
    manager_->shortcutHandler = [this, &marks, mark = longMark] {
        manager_->clearShortcut();
        marks += mark;
    };
    EXPECT_EQ(service_.press(shiftCommandK), noErr);
    EXPECT_THAT(service_.registered(), ElementsAre(commandG));
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_THAT(service_.registered(), ElementsAre(commandG));
    EXPECT_EQ(marks, longMark + longMark);
}

TEST_F(ShortcutManagerTests, TheHandlerMayReplaceItself) {
    start();
    std::string marks;
    manager_->shortcutHandler = [this, &marks, mark = longMark] {
        manager_->shortcutHandler = [&marks] { marks += '!'; };
        marks += mark;
    };
    service_.press(commandG);
    service_.press(commandG);
    EXPECT_EQ(marks, longMark + "!");
}

TEST_F(ShortcutManagerTests, TheHandlerMayDestroyTheManager) {
    for (const bool isSet : {false, true}) {
        start();
        if (isSet) {
            manager_->setShortcut(Key::g, ModifierFlags::command);
        }
        std::string marks;
        manager_->shortcutHandler = [this, &marks, mark = longMark] {
            manager_.reset();
            marks += mark;
        };
        EXPECT_EQ(service_.press(commandG), noErr);
        EXPECT_EQ(marks, longMark);
        EXPECT_THAT(service_.registered(), IsEmpty());
    }
}

// The shortcut in words

TEST_F(ShortcutManagerTests, DisplaysTheDefaultIfNothingIsStored) {
    EXPECT_EQ(displayString(), "Command G");
    EXPECT_TRUE(defaults_.contents().empty());
}

TEST_F(ShortcutManagerTests, DisplaysTheDefaultForAnUnknownKeyCode) {
    defaults_.setObject(shortcutKey, storedShortcut(52, 0x120000));
    EXPECT_EQ(displayString(), "Command G");
}

TEST_F(ShortcutManagerTests, DisplaysTheModifiersInOrder) {
    const auto shown = [this](std::uint64_t keyCode, std::uint64_t modifiers) {
        defaults_.setObject(shortcutKey, storedShortcut(keyCode, modifiers));
        return displayString();
    };
    EXPECT_EQ(shown(5, 0x100000), "Command G");
    EXPECT_EQ(shown(0x28, 0x120000), "Command + Shift K");
    EXPECT_EQ(shown(3, 0xC0000), "Option + Control F");
    EXPECT_EQ(shown(0, 0x1E0000), "Command + Option + Shift + Control A");
    EXPECT_EQ(shown(0, 0xFFFFFFFFFFE1FFFF), "A") << "no other bit has a word";
}

TEST_F(ShortcutManagerTests, DisplaysAKeyWithoutModifiersInUpperCase) {
    const auto shown = [this](std::uint64_t keyCode) {
        defaults_.setObject(shortcutKey, storedShortcut(keyCode, 0));
        return displayString();
    };
    EXPECT_EQ(shown(0), "A");
    EXPECT_EQ(shown(0x3F), "FN");
    EXPECT_EQ(shown(0x7A), "\uF860F1");
    EXPECT_EQ(shown(0x69), "\uF861F13");
    EXPECT_EQ(shown(0x24), "\u21A9\uFE0E");
    EXPECT_EQ(shown(0x43), "\U0001D5D1");
}

} // namespace
