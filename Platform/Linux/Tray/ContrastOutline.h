#pragma once

#include <QImage>

namespace platform {

/// Returns `shape` in white with a dark line of `width` pixels around it, at the same size and
/// premultiplied. Only the opacity of `shape` counts.
///
/// Trays cannot recolour pixels, and their background is unknown: panels are dark under light
/// desktops and the other way round. So the shape brings its own contrast.
[[nodiscard]] QImage withContrastOutline(const QImage& shape, double width);

} // namespace platform
