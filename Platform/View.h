#pragma once

#include "Foundation/Interface.h"
#include "Platform/Geometry.h"

#include <cstdint>
#include <memory>

namespace platform {

/// A rectangle in a window. A view keeps the views that were put into it alive. Main thread only.
class View : public foundation::Interface {
  public:
    /// In points, as laid out last.
    [[nodiscard]] virtual Rect frame() const = 0;

    /// Puts the view into this one, in front of those before it. Both are of the same toolkit.
    virtual void addSubview(std::shared_ptr<View> view) = 0;

    /// Whether the view's frame is kept by fixed margins to its container, as it is at first,
    /// instead of by constraints.
    virtual void setTranslatesAutoresizingMaskIntoConstraints(bool translates) = 0;

    /// Brings the frames of everything inside up to date now.
    virtual void layoutSubtreeIfNeeded() = 0;
};

/// A view that shows what is described elsewhere, by the system's own declarative means.
class HostingView : public View {};

/// An arrangement of views from top to bottom.
class VerticalStack : public View {
  public:
    enum class Alignment : std::uint8_t { leading, centerX };

    virtual void setSpacing(double spacing) = 0;
    virtual void setEdgeInsets(EdgeInsets insets) = 0;
    /// How the arranged views stand in the width; centerX at first.
    virtual void setAlignment(Alignment alignment) = 0;
    virtual void addArrangedSubview(std::shared_ptr<View> view) = 0;
};

} // namespace platform
