#pragma once

#include "Platform/View.h"

#include <memory>
#include <vector>

namespace platform {

/// What every view of the in-memory toolkit, whatever its kind, tells about itself. Main thread
/// only.
class MemoryViewNode {
  public:
    using Subviews = std::vector<std::shared_ptr<View>>;

    MemoryViewNode(const MemoryViewNode&) = delete;
    MemoryViewNode& operator=(const MemoryViewNode&) = delete;
    MemoryViewNode(MemoryViewNode&&) = delete;
    MemoryViewNode& operator=(MemoryViewNode&&) = delete;

    /// The node of a view of the in-memory toolkit; any other view throws std::bad_cast.
    [[nodiscard]] static const MemoryViewNode& of(const View& view);

    /// What was put into the view, the rearmost first. The view keeps it alive.
    [[nodiscard]] const Subviews& subviews() const { return subviews_; }

    /// Whether the other view stands in this one, at any depth.
    [[nodiscard]] bool holds(const View& other) const;

    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const {
        return translatesAutoresizingMaskIntoConstraints_;
    }

    /// How often the view was told to lay out what is inside.
    [[nodiscard]] int layoutCount() const { return layoutCount_; }

    /// For windows and for tests, which give a view its place.
    void setFrame(Rect frame) { frame_ = frame; }

  protected:
    explicit MemoryViewNode(Rect frame) : frame_(frame) {}

    ~MemoryViewNode() = default;

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): the view's other half
    Rect frame_;
    Subviews subviews_;
    bool translatesAutoresizingMaskIntoConstraints_ = true;
    int layoutCount_ = 0;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

} // namespace platform
