#pragma once

#include "Platform/Memory/MemoryViewOf.h"

#include <memory>
#include <optional>
#include <utility>

namespace platform {

/// A vertical stack in memory. Its subviews are the arranged ones, the topmost first. Main thread
/// only.
class MemoryVerticalStack final : public MemoryViewOf<VerticalStack> {
  public:
    MemoryVerticalStack() = default;

    void setSpacing(double spacing) override { spacing_ = spacing; }

    void setEdgeInsets(EdgeInsets insets) override { edgeInsets_ = insets; }

    void setAlignment(Alignment alignment) override { alignment_ = alignment; }

    void addArrangedSubview(std::shared_ptr<View> view) override { addSubview(std::move(view)); }

    /// None while nobody has chosen one.
    [[nodiscard]] std::optional<double> spacing() const { return spacing_; }

    [[nodiscard]] EdgeInsets edgeInsets() const { return edgeInsets_; }

    [[nodiscard]] Alignment alignment() const { return alignment_; }

  private:
    std::optional<double> spacing_;
    EdgeInsets edgeInsets_;
    Alignment alignment_ = Alignment::centerX;
};

} // namespace platform
