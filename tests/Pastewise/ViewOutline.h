#pragma once

#include "Platform/Memory/MemoryViews.h"
#include "Platform/Views.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

/// The names of views in lines().
using ViewNames = std::map<const platform::View*, std::string>;

/// The outline of a view of the in-memory toolkit: a line for it and each view inside, indented by
/// two spaces per level, with the attributes that differ from their initial values.
std::string outline(const platform::View& view);

/// Constraints as lines like "button.top = container.top". A view without a name is "?".
std::vector<std::string> lines(const std::vector<platform::MemoryLayoutConstraint>& constraints,
                               const ViewNames& names);

} // namespace testing_support
