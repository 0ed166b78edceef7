#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace foundation {

/// An instant, in microseconds since the start of 1970 in UTC, without leap seconds.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

/// A universally unique identifier.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A new random identifier (version 4). Any thread.
    [[nodiscard]] static Uuid random();

    bool operator==(const Uuid&) const = default;
};

/// A value of a type that the program has no use for, an array for example. It can be read but not
/// stored: only its type is known.
struct Other {
    bool operator==(const Other&) const = default;
};

struct Dictionary;

/// A value whose type is known only at run time: what settings and system calls hand out. Strings
/// are UTF-8. Each alternative is a type of its own: a caller that asks for a signed integer does
/// not find an unsigned one.
///
/// A number is a boolean, an integer or a double. Booleans count as 0 and 1, as in the systems that
/// hand these values out.
using Value =
    std::variant<Other, bool, std::int64_t, std::uint64_t, double, std::string, Date, Dictionary>;

struct Dictionary : std::map<std::string, Value, std::less<>> {
    using map::map;
};

/// Whether a number is other than zero. None for what is not a number.
[[nodiscard]] std::optional<bool> boolValue(const Value& value);

/// The low 32 bits of a number's integral part: -1 gives 0xFFFFFFFF. A double outside the signed
/// 64-bit range, or NaN, gives 0. None for what is not a number.
[[nodiscard]] std::optional<std::uint32_t> uint32Value(const Value& value);

/// The number as an unsigned integer of exactly its value; 5.0 is one. None if it is negative, too
/// large, has a fraction, or is not a number.
[[nodiscard]] std::optional<std::uint32_t> exactUint32Value(const Value& value);
[[nodiscard]] std::optional<std::uint64_t> exactUint64Value(const Value& value);

/// A number as the nearest double. None for what is not a number.
[[nodiscard]] std::optional<double> doubleValue(const Value& value);

} // namespace foundation
