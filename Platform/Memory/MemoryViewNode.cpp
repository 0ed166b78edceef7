#include "Platform/Memory/MemoryViewNode.h"

#include <algorithm>

namespace platform {

const MemoryViewNode& MemoryViewNode::of(const View& view) {
    return dynamic_cast<const MemoryViewNode&>(view);
}

bool MemoryViewNode::holds(const View& other) const {
    return std::any_of(subviews_.begin(), subviews_.end(), [&other](const auto& subview) {
        return subview.get() == &other || of(*subview).holds(other);
    });
}

} // namespace platform
