#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/Value.h"
#include "HotKey/HotKeysController.h"
#include "HotKey/ModifierFlags.h"
#include "Pastewise/ShortcutManager.h"
#include "Platform/Memory/Journal.h"
#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "Platform/Memory/MemoryKeyDownMonitors.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryUserDefaults.h"
#include "Platform/Memory/MemoryViews.h"
#include "Platform/Views.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace testing_support {

/// The Carbon virtual key codes that the tests type.
namespace key_code {
inline constexpr std::uint32_t g = 5;
inline constexpr std::uint32_t five = 23;
inline constexpr std::uint32_t k = 40;
inline constexpr std::uint32_t tab = 48;
inline constexpr std::uint32_t unused = 52;
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t leftArrow = 123;
} // namespace key_code

/// The services that the preferences need, in memory, with the default shortcut saved and
/// registered.
class PreferencesTest : public testing::Test {
  protected:
    static constexpr std::string_view shortcutKey = "userDefinedShortcut";

    /// The parts of the preferences, found by their position among the views.
    struct Views {
        explicit Views(platform::ViewController& controller) : root(controller.view()) {
            stack = subview(root, 0);
            shortcutContainer = subview(stack, 1);
            shortcutStack = subview(shortcutContainer, 0);
            buttonContainer = subview(stack, 2);
            shortcutLabel = as<platform::MemoryLabel>(subview(shortcutStack, 1));
            recordButton = as<platform::MemoryButton>(subview(buttonContainer, 0));
            statusLabel = as<platform::MemoryLabel>(subview(stack, 3));
            resetButton = as<platform::MemoryButton>(subview(stack, 4));
        }

        static std::shared_ptr<platform::View> subview(const std::shared_ptr<platform::View>& view,
                                                       std::size_t index) {
            return platform::MemoryViewNode::of(*view).subviews().at(index);
        }

        template <typename Kind>
        static std::shared_ptr<Kind> as(const std::shared_ptr<platform::View>& view) {
            auto kind = std::dynamic_pointer_cast<Kind>(view);
            EXPECT_NE(kind, nullptr);
            return kind;
        }

        std::shared_ptr<platform::View> root;
        std::shared_ptr<platform::View> stack;
        std::shared_ptr<platform::View> shortcutContainer;
        std::shared_ptr<platform::View> shortcutStack;
        std::shared_ptr<platform::View> buttonContainer;
        std::shared_ptr<platform::MemoryLabel> shortcutLabel;
        std::shared_ptr<platform::MemoryButton> recordButton;
        std::shared_ptr<platform::MemoryLabel> statusLabel;
        std::shared_ptr<platform::MemoryButton> resetButton;
    };

    /// Presses a key in the program's window. Returns whether the window got it.
    bool reachesWindow(std::uint32_t keyCode, hotkey::ModifierFlags modifiers) {
        return keyDownMonitors_.deliver({.keyCode = keyCode, .modifierFlags = modifiers})
            .has_value();
    }

    [[nodiscard]] std::optional<foundation::Dictionary> savedShortcut() const {
        return userDefaults_.dictionaryForKey(shortcutKey);
    }

    static foundation::Dictionary shortcut(std::uint64_t keyCode, std::uint64_t modifiers) {
        return {{"keyCode", keyCode}, {"modifiers", modifiers}};
    }

    std::shared_ptr<platform::Journal> journal_ = std::make_shared<platform::Journal>();
    platform::MemoryMainQueue mainQueue_{journal_};
    platform::MemoryLogSink sink_;
    platform::MemoryUserDefaults userDefaults_{journal_};
    platform::MemoryEventHotKeyService hotKeyService_{journal_};
    platform::MemoryKeyDownMonitors keyDownMonitors_{journal_};
    platform::MemoryToolkit toolkit_{journal_};
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    foundation::NotificationCenter notificationCenter_{mainQueue_};
    hotkey::HotKeysController hotKeys_{hotKeyService_};
    pastewise::ShortcutManager shortcutManager_{
        hotKeys_, userDefaults_, notificationCenter_, loggers_};
};

} // namespace testing_support
