#pragma once

#include <QImage>

namespace platform {

/// The shape that is opaque in `shape`, in white, with a dark line of `width` pixels around it. The
/// result has the size of `shape`, premultiplied.
///
/// A tray takes pixels and cannot recolour them, and nobody says what colour it has: panels are
/// dark under light desktops and the other way round. So a shape carries its own contrast. On what
/// is dark the white is seen, on what is light the line, in between both.
[[nodiscard]] QImage withContrastOutline(const QImage& shape, double width);

} // namespace platform
