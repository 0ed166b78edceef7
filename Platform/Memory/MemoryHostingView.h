#pragma once

#include "Platform/Memory/MemoryViewOf.h"

#include <optional>

namespace platform {

/// A view in memory that stands for declared content, which takes its room when it is laid out.
/// Main thread only.
class MemoryHostingView final : public MemoryViewOf<HostingView> {
  public:
    MemoryHostingView() = default;

    /// The frame that the view has from its next layout on.
    void setFrameOfNextLayout(Rect frame) { frameOfNextLayout_ = frame; }

    void layoutSubtreeIfNeeded() override {
        MemoryViewOf::layoutSubtreeIfNeeded();
        setFrame(frameOfNextLayout_.value_or(frame()));
    }

  private:
    std::optional<Rect> frameOfNextLayout_;
};

} // namespace platform
