#pragma once

#include <cstdint>

namespace hotkey {

/// What hot keys need of Carbon's event manager, with the system's names and values.
using OSStatus = std::int32_t;

inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50;
inline constexpr OSStatus eventNotHandledErr = -9874;
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;

/// Four ASCII characters as one number, the first in the highest byte.
consteval std::uint32_t fourCharCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int index = 0; index < 4; ++index) {
        code = (code << 8U) + static_cast<unsigned char>(text[index]);
    }
    return code;
}

inline constexpr std::uint32_t kEventClassKeyboard = fourCharCode("keyb");
inline constexpr std::uint32_t kEventHotKeyPressed = 5;
inline constexpr std::uint32_t kEventHotKeyReleased = 6;
inline constexpr std::uint32_t kEventParamDirectObject = fourCharCode("----");
inline constexpr std::uint32_t typeEventHotKeyID = fourCharCode("hkid");

/// A client's name for its hot key. Events carry it in this layout.
struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const EventHotKeyID&) const = default;
};

static_assert(sizeof(EventHotKeyID) == 8);

struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;

    bool operator==(const EventTypeSpec&) const = default;
};

/// A reference that only the service that handed it out can read; null by default.
template <typename Tag>
struct OpaqueReference {
    void* pointer = nullptr;

    [[nodiscard]] bool isNull() const { return pointer == nullptr; }

    bool operator==(const OpaqueReference&) const = default;
};

using EventTargetRef = OpaqueReference<struct EventTargetTag>;
using EventHotKeyRef = OpaqueReference<struct EventHotKeyTag>;
using EventHandlerRef = OpaqueReference<struct EventHandlerTag>;
using EventHandlerCallRef = OpaqueReference<struct EventHandlerCallTag>;
using EventRef = OpaqueReference<struct EventTag>;

} // namespace hotkey
