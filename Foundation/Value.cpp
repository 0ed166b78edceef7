#include "Foundation/Value.h"

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>

namespace foundation {

namespace {

/// `convert` of a number. None for what is not a number.
template <typename Result, typename Convert>
std::optional<Result> ofNumber(const Value& value, Convert convert) {
    return std::visit(
        [&convert](const auto& held) -> std::optional<Result> {
            if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(held)>>) {
                return convert(held);
            } else {
                return std::nullopt;
            }
        },
        value);
}

std::uint32_t lowBits(double number) {
    constexpr double twoToThe63rd = 9223372036854775808.0;
    // False for NaN.
    const bool fits = number >= -twoToThe63rd && number < twoToThe63rd;
    return fits ? static_cast<std::uint32_t>(static_cast<std::int64_t>(number)) : 0;
}

std::optional<std::uint64_t> exactUint64(double number) {
    constexpr double twoToThe64th = 18446744073709551616.0;
    // False for NaN.
    const bool fits = number >= 0 && number < twoToThe64th && std::trunc(number) == number;
    return fits ? std::optional(static_cast<std::uint64_t>(number)) : std::nullopt;
}

} // namespace

Uuid Uuid::random() {
    std::random_device source;
    std::uniform_int_distribution<unsigned> anyByte(0, 0xFF);
    Uuid uuid;
    for (std::uint8_t& byte : uuid.bytes) {
        byte = static_cast<std::uint8_t>(anyByte(source));
    }
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

std::optional<bool> boolValue(const Value& value) {
    return ofNumber<bool>(value, [](auto number) { return number != 0; });
}

std::optional<std::uint32_t> uint32Value(const Value& value) {
    return ofNumber<std::uint32_t>(value, [](auto number) {
        if constexpr (std::is_floating_point_v<decltype(number)>) {
            return lowBits(number);
        } else {
            return static_cast<std::uint32_t>(number);
        }
    });
}

std::optional<std::uint64_t> exactUint64Value(const Value& value) {
    return ofNumber<std::uint64_t>(value, [](auto number) -> std::optional<std::uint64_t> {
        if constexpr (std::is_floating_point_v<decltype(number)>) {
            return exactUint64(number);
        } else if constexpr (std::is_signed_v<decltype(number)>) {
            return number >= 0 ? std::optional(static_cast<std::uint64_t>(number)) : std::nullopt;
        } else {
            return number;
        }
    });
}

std::optional<std::uint32_t> exactUint32Value(const Value& value) {
    const std::optional<std::uint64_t> whole = exactUint64Value(value);
    if (!whole || *whole > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*whole);
}

std::optional<double> doubleValue(const Value& value) {
    return ofNumber<double>(value, [](auto number) { return static_cast<double>(number); });
}

} // namespace foundation
