#pragma once

#include "HotKey/SymbolicHotKeys.h"

#include <utility>

namespace platform {

/// A system's own shortcuts as a test sets them. Main thread only.
class MemorySymbolicHotKeys final : public hotkey::SymbolicHotKeys {
  public:
    explicit MemorySymbolicHotKeys(Answer answer) : answer_(std::move(answer)) {}

    [[nodiscard]] Answer copySymbolicHotKeys() override { return answer_; }

  private:
    Answer answer_;
};

} // namespace platform
