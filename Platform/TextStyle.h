#pragma once

#include <cstdint>

namespace platform {

enum class FontWeight : std::uint8_t { regular, bold };

/// The system's own font at a size in points.
struct SystemFont {
    double size = 0;
    FontWeight weight = FontWeight::regular;
    bool operator==(const SystemFont&) const = default;
};

/// What a text is for; the system chooses the colour, also when its appearance changes.
enum class TextColor : std::uint8_t { label, secondaryLabel };

} // namespace platform
