#pragma once

#include "Platform/View.h"

#include <cstdint>
#include <memory>

namespace platform {

/// A rule for the place or size of a view. Two anchors equal, or one at least a constant.
struct LayoutConstraint {
    enum class Anchor : std::uint8_t { top, leading, trailing, bottom, centerX, width };
    enum class Relation : std::uint8_t { equal, greaterThanOrEqual };

    std::shared_ptr<View> first;
    Anchor anchor = Anchor::top;
    Relation relation = Relation::equal;
    /// The view whose same anchor is meant; null for a rule with a constant alone.
    std::shared_ptr<View> second;
    double constant = 0;

    [[nodiscard]] static LayoutConstraint
    equal(const std::shared_ptr<View>& first, Anchor anchor, const std::shared_ptr<View>& second) {
        return {first, anchor, Relation::equal, second, 0};
    }

    [[nodiscard]] static LayoutConstraint
    atLeast(const std::shared_ptr<View>& first, Anchor anchor, double constant) {
        return {first, anchor, Relation::greaterThanOrEqual, nullptr, constant};
    }
};

} // namespace platform
