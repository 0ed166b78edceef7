#include "Foundation/Value.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace foundation {

namespace {

std::uint32_t lowBits(double number) {
    constexpr double twoToThe63rd = 9223372036854775808.0;
    // Written so that NaN fails it.
    const bool fits = number >= -twoToThe63rd && number < twoToThe63rd;
    return fits ? static_cast<std::uint32_t>(static_cast<std::int64_t>(number)) : 0;
}

} // namespace

std::optional<bool> boolValue(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::optional<bool> {
            if constexpr (std::is_same_v<decltype(held), const std::string&>) {
                return std::nullopt;
            } else {
                return held != 0;
            }
        },
        value);
}

std::optional<std::uint32_t> uint32Value(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::optional<std::uint32_t> {
            if constexpr (std::is_same_v<decltype(held), const std::string&>) {
                return std::nullopt;
            } else if constexpr (std::is_same_v<decltype(held), const double&>) {
                return lowBits(held);
            } else {
                return static_cast<std::uint32_t>(held);
            }
        },
        value);
}

std::optional<std::uint64_t> exactUint64Value(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::optional<std::uint64_t> {
            if constexpr (std::is_same_v<decltype(held), const std::string&>) {
                return std::nullopt;
            } else if constexpr (std::is_same_v<decltype(held), const double&>) {
                constexpr double twoToThe64th = 18446744073709551616.0;
                // Written so that NaN fails it.
                const bool fits = held >= 0 && held < twoToThe64th && std::trunc(held) == held;
                return fits ? std::optional(static_cast<std::uint64_t>(held)) : std::nullopt;
            } else if constexpr (std::is_same_v<decltype(held), const std::int64_t&>) {
                return held >= 0 ? std::optional(static_cast<std::uint64_t>(held)) : std::nullopt;
            } else {
                return static_cast<std::uint64_t>(held);
            }
        },
        value);
}

std::optional<std::uint32_t> exactUint32Value(const Value& value) {
    const std::optional<std::uint64_t> whole = exactUint64Value(value);
    if (!whole || *whole > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*whole);
}

std::optional<double> doubleValue(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::optional<double> {
            if constexpr (std::is_same_v<decltype(held), const std::string&>) {
                return std::nullopt;
            } else {
                return static_cast<double>(held);
            }
        },
        value);
}

} // namespace foundation
