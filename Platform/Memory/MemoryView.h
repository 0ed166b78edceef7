#pragma once

#include "Platform/Memory/MemoryViewOf.h"

namespace platform {

/// An empty view in memory. Main thread only.
class MemoryView final : public MemoryViewOf<View> {
  public:
    explicit MemoryView(Rect frame) : MemoryViewOf(frame) {}
};

} // namespace platform
