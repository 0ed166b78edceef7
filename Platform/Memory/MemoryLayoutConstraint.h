#pragma once

#include "Platform/LayoutConstraint.h"

#include <memory>

namespace platform {

/// A constraint in force, which leaves its views to their owners.
struct MemoryLayoutConstraint {
    std::weak_ptr<View> first;
    LayoutConstraint::Anchor anchor = LayoutConstraint::Anchor::top;
    LayoutConstraint::Relation relation = LayoutConstraint::Relation::equal;
    std::weak_ptr<View> second;
    double constant = 0;
};

} // namespace platform
