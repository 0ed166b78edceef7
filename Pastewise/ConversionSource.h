#pragma once

#include <cstdint>
#include <string_view>

namespace pastewise {

/// What started a conversion.
enum class ConversionSource : std::uint8_t { hotkey, manual };

/// The source in one word, for the log.
[[nodiscard]] constexpr std::string_view description(ConversionSource source) {
    return source == ConversionSource::hotkey ? "hotkey" : "manual";
}

} // namespace pastewise
