#pragma once

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

} // namespace platform
