#pragma once

#include "Platform/Memory/MemoryViewNode.h"

#include <memory>
#include <utility>

namespace platform {

/// The part that is the same in every kind of view, `Kind` being the interface of one.
template <typename Kind>
class MemoryViewOf : public Kind, public MemoryViewNode {
  public:
    [[nodiscard]] Rect frame() const override { return frame_; }

    void addSubview(std::shared_ptr<View> view) override { subviews_.push_back(std::move(view)); }

    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) override {
        translatesAutoresizingMaskIntoConstraints_ = translates;
    }

    void layoutSubtreeIfNeeded() override { ++layoutCount_; }

  protected:
    explicit MemoryViewOf(Rect frame = {}) : MemoryViewNode(frame) {}
};

} // namespace platform
