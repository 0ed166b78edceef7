#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace foundation {

/// A value whose type is known only at run time: what systems and stores keep in dictionaries.
/// Strings are UTF-8. Each alternative is a type of its own: a reader that wants a signed integer
/// and finds an unsigned one has found another type.
///
/// A number is any alternative but the string. A boolean is one too, 0 or 1: systems that hand such
/// dictionaries out keep booleans as numbers.
using Value = std::variant<bool, std::int64_t, std::uint64_t, double, std::string>;

using Dictionary = std::map<std::string, Value, std::less<>>;

/// Whether a number is other than zero. None for what is not a number.
[[nodiscard]] std::optional<bool> boolValue(const Value& value);

/// The low 32 bits of a number, without its fraction: -1 gives 0xFFFFFFFF. A floating-point number
/// beyond the 64-bit integers, or none at all (NaN), counts as 0. None for what is not a number.
[[nodiscard]] std::optional<std::uint32_t> uint32Value(const Value& value);

/// A number that is an unsigned 32-bit or 64-bit integer exactly, 5.0 included. None for a negative
/// number, a larger one, one with a fraction, and for what is not a number.
[[nodiscard]] std::optional<std::uint32_t> exactUint32Value(const Value& value);
[[nodiscard]] std::optional<std::uint64_t> exactUint64Value(const Value& value);

/// A number as a double, rounded where it has more digits. None for what is not a number.
[[nodiscard]] std::optional<double> doubleValue(const Value& value);

} // namespace foundation
