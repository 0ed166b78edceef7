#include "HotKey/HotKey.h"
#include "HotKey/HotKeysController.h"
#include "Platform/Memory/MemoryEventHotKeyService.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using hotkey::eventNotHandledErr;
using hotkey::HotKey;
using hotkey::HotKeysController;
using hotkey::Key;
using hotkey::KeyCombo;
using hotkey::ModifierFlags;
using hotkey::noErr;
using platform::MemoryEventHotKeyService;

class HotKeyTests : public testing::Test {
  protected:
    static constexpr MemoryEventHotKeyService::Combination commandG{5, 0x100};

    HotKey::Handler note(char mark) {
        return [this, mark] { notes_ += mark; };
    }

    MemoryEventHotKeyService service_;
    HotKeysController controller_{service_};
    std::string notes_;
};

TEST_F(HotKeyTests, EveryConstructorRegisters) {
    const HotKey fromCombo(controller_, KeyCombo(5, 0x100));
    const HotKey fromCarbonValues(controller_, 4U, 0x1B00U);
    const HotKey fromKey(controller_, Key::k, ModifierFlags::command | ModifierFlags::shift);
    EXPECT_EQ(service_.registered(),
              (std::vector<MemoryEventHotKeyService::Combination>{
                  {5, 0x100}, {4, 0x1B00}, {0x28, 0x300}}));
    EXPECT_EQ(fromCarbonValues.keyCombo(), KeyCombo(4, 0x1B00));
    EXPECT_EQ(fromKey.keyCombo(), KeyCombo(0x28, 0x300));
    EXPECT_FALSE(fromCombo.isPaused());
}

TEST_F(HotKeyTests, EveryConstructorTakesHandlers) {
    const HotKey fromCombo(controller_, KeyCombo(5, 0x100), note('a'), note('b'));
    const HotKey fromCarbonValues(controller_, 4U, 0x100U, note('c'), note('d'));
    const HotKey fromKey(controller_, Key::k, ModifierFlags::command, note('e'), note('f'));
    for (const auto& combination : service_.registered()) {
        EXPECT_EQ(service_.press(combination), noErr);
        EXPECT_EQ(service_.release(combination), noErr);
    }
    EXPECT_EQ(notes_, "abcdef");
}

TEST_F(HotKeyTests, HasAUniqueIdentifier) {
    std::set<std::array<std::uint8_t, 16>> identifiers;
    for (int i = 0; i < 100; ++i) {
        const HotKey hotKey(controller_, KeyCombo(5, 0x100));
        identifiers.insert(hotKey.identifier().bytes);
    }
    EXPECT_EQ(identifiers.size(), 100U);
}

TEST_F(HotKeyTests, DestructionUnregisters) {
    std::optional<HotKey> hotKey(std::in_place, controller_, Key::g, ModifierFlags::command);
    hotKey.reset();
    EXPECT_TRUE(service_.registered().empty());
    EXPECT_EQ(service_.journal()->calls().back(), "unregister 1");
}

TEST_F(HotKeyTests, ReleasesItsHandlersAfterUnregistering) {
    bool wasRegistered = true;
    std::optional<HotKey> hotKey(std::in_place, controller_, Key::g, ModifierFlags::command);
    int something = 0;
    hotKey->keyDownHandler = [held = std::shared_ptr<int>(&something, [&](int* /*something*/) {
                                  wasRegistered = !service_.registered().empty();
                              })] {};
    hotKey.reset();
    EXPECT_FALSE(wasRegistered);
}

TEST_F(HotKeyTests, CallsAReplacedHandlerAtTheNextEvent) {
    HotKey hotKey(controller_, Key::g, ModifierFlags::command, note('a'));
    service_.press(commandG);
    hotKey.keyDownHandler = note('b');
    service_.press(commandG);
    hotKey.keyDownHandler = nullptr;
    EXPECT_EQ(service_.press(commandG), eventNotHandledErr);
    EXPECT_EQ(notes_, "ab");
}

TEST_F(HotKeyTests, PausingUnregistersAndResumingRegistersUnderANewId) {
    HotKey hotKey(controller_, Key::g, ModifierFlags::command, note('a'));
    hotKey.setIsPaused(true);
    EXPECT_TRUE(hotKey.isPaused());
    EXPECT_TRUE(service_.registered().empty());
    EXPECT_EQ(service_.press(commandG), eventNotHandledErr);
    hotKey.setIsPaused(false);
    EXPECT_FALSE(hotKey.isPaused());
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(notes_, "a");
    EXPECT_EQ(service_.journal()->calls(),
              (std::vector<std::string>{"register 5 0x100 as QZhk 1",
                                        "install",
                                        "unregister 1",
                                        "register 5 0x100 as QZhk 2"}));
}

TEST_F(HotKeyTests, PausingTwiceUnregistersOnce) {
    HotKey hotKey(controller_, Key::g, ModifierFlags::command);
    hotKey.setIsPaused(true);
    hotKey.setIsPaused(true);
    EXPECT_EQ(service_.journal()->calls(),
              (std::vector<std::string>{"register 5 0x100 as QZhk 1", "install", "unregister 1"}));
}

TEST_F(HotKeyTests, ResumingWithoutAPauseDoesNothing) {
    HotKey hotKey(controller_, Key::g, ModifierFlags::command);
    hotKey.setIsPaused(false);
    EXPECT_EQ(service_.journal()->calls(),
              (std::vector<std::string>{"register 5 0x100 as QZhk 1", "install"}));
    EXPECT_NE(controller_.hotKey(1), nullptr);
}

TEST_F(HotKeyTests, DestructionDuringAPauseDoesNotUnregisterAgain) {
    std::optional<HotKey> hotKey(std::in_place, controller_, Key::g, ModifierFlags::command);
    hotKey->setIsPaused(true);
    hotKey.reset();
    EXPECT_EQ(service_.journal()->calls().back(), "unregister 1");
    EXPECT_EQ(service_.journal()->calls().size(), 3U);
}

TEST_F(HotKeyTests, AHandlerMayDestroyItsHotKey) {
    std::optional<HotKey> hotKey(std::in_place, controller_, Key::g, ModifierFlags::command);
    hotKey->keyDownHandler = [&, mark = std::string("a text too long for the handler itself")] {
        hotKey.reset();
        notes_ += mark;
    };
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(notes_, "a text too long for the handler itself");
    EXPECT_TRUE(service_.registered().empty());
}

TEST_F(HotKeyTests, AHandlerMayReplaceItself) {
    HotKey hotKey(controller_, Key::g, ModifierFlags::command);
    hotKey.keyDownHandler = [&, mark = std::string("a text too long for the handler itself")] {
        hotKey.keyDownHandler = note('b');
        notes_ += mark.back();
    };
    service_.press(commandG);
    service_.press(commandG);
    EXPECT_EQ(notes_, "fb");
}

TEST_F(HotKeyTests, AHandlerMayPauseAndReplaceItsHotKey) {
    std::optional<HotKey> hotKey(std::in_place, controller_, Key::g, ModifierFlags::command);
    hotKey->keyDownHandler = [&] {
        hotKey->setIsPaused(true);
        hotKey.emplace(controller_, Key::g, ModifierFlags::command, note('b'));
    };
    service_.press(commandG);
    service_.press(commandG);
    EXPECT_EQ(notes_, "b");
}

TEST(HotKeyLifetimeTests, IsNeitherCopyableNorMovable) {
    EXPECT_FALSE(std::is_copy_constructible_v<HotKey>);
    EXPECT_FALSE(std::is_move_constructible_v<HotKey>);
}

TEST(HotKeyLifetimeTests, MayOutliveItsController) {
    MemoryEventHotKeyService service;
    auto controller = std::make_unique<HotKeysController>(service);
    HotKey hotKey(*controller, Key::g, ModifierFlags::command);
    controller.reset();
    EXPECT_TRUE(service.registered().empty());
    hotKey.setIsPaused(true);
    hotKey.setIsPaused(false);
    EXPECT_FALSE(hotKey.isPaused());
    EXPECT_TRUE(service.registered().empty());
}

} // namespace
