#pragma once

#include <cstdint>
#include <string>

namespace hotkey {

/// Carbon's modifier masks.
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;

/// A set of modifier keys, in the bits of a Mac's event modifier flags. Unknown bits are kept; the
/// conversions and the description use only command, option, control and shift.
struct ModifierFlags {
    std::uint64_t rawValue = 0;

    static const ModifierFlags capsLock;
    static const ModifierFlags shift;
    static const ModifierFlags control;
    static const ModifierFlags option;
    static const ModifierFlags command;
    static const ModifierFlags function;

    /// The set for a Carbon mask; other Carbon bits are dropped.
    [[nodiscard]] static ModifierFlags fromCarbonFlags(std::uint32_t carbonFlags);

    /// The Carbon mask of this set.
    [[nodiscard]] std::uint32_t carbonFlags() const;

    /// The modifiers' glyphs in UTF-8, in the order control, option, shift, command; empty if the
    /// set has none of them.
    [[nodiscard]] std::string description() const;

    /// Whether every bit of `other` is in this set.
    [[nodiscard]] constexpr bool contains(ModifierFlags other) const {
        return (rawValue & other.rawValue) == other.rawValue;
    }

    friend constexpr ModifierFlags operator|(ModifierFlags left, ModifierFlags right) {
        return {left.rawValue | right.rawValue};
    }

    bool operator==(const ModifierFlags&) const = default;
};

inline constexpr ModifierFlags ModifierFlags::capsLock{0x10000};
inline constexpr ModifierFlags ModifierFlags::shift{0x20000};
inline constexpr ModifierFlags ModifierFlags::control{0x40000};
inline constexpr ModifierFlags ModifierFlags::option{0x80000};
inline constexpr ModifierFlags ModifierFlags::command{0x100000};
inline constexpr ModifierFlags ModifierFlags::function{0x800000};

} // namespace hotkey
