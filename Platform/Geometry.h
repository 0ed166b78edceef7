#pragma once

#include <cstdint>

namespace platform {

/// All lengths are points: one device-independent pixel each.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    Point origin;
    Size size;
    bool operator==(const Rect&) const = default;
};

struct EdgeInsets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;
    bool operator==(const EdgeInsets&) const = default;
};

enum class FontWeight : std::uint8_t { regular, bold };

/// The system's own font at a size in points.
struct SystemFont {
    double size = 0;
    FontWeight weight = FontWeight::regular;
    bool operator==(const SystemFont&) const = default;
};

/// What a text is for; the system chooses the colour to match its appearance.
enum class TextColor : std::uint8_t { label, secondaryLabel };

} // namespace platform
