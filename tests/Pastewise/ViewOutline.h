#pragma once

#include "Platform/Memory/MemoryViews.h"
#include "Platform/Views.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

/// Names of views, for constraints to be read by.
using ViewNames = std::map<const platform::View*, std::string>;

/// How a view of the in-memory toolkit and all that stands in it looks: one line for each view, two
/// spaces deeper than its container's, and nothing about what is as it was at first.
std::string outline(const platform::View& view);

/// Constraints as lines like "button.top = container.top". A view without a name is "?".
std::vector<std::string> lines(const std::vector<platform::MemoryLayoutConstraint>& constraints,
                               const ViewNames& names);

} // namespace testing_support
