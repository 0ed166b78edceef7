#pragma once

#include "Platform/Geometry.h"

#include <QColor>

class QPalette;

namespace platform {

/// The colour of a text on a window's background. What is secondary is fainter than the rest, yet
/// stands out from the background by a contrast of at least 4.5 to 1 wherever the rest does. Any
/// thread.
[[nodiscard]] QColor textColor(TextColor color, const QPalette& palette);

/// The contrast of two opaque colours, 1 for equal ones to 21 for black on white.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

} // namespace platform
