#pragma once

#include "Platform/StandardOutput.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A standard output that is kept. Main thread only.
class MemoryStandardOutput final : public StandardOutput {
  public:
    void writeLine(std::string_view text) override { lines_.emplace_back(text); }

    /// All lines so far, without their line feeds.
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

  private:
    std::vector<std::string> lines_;
};

} // namespace platform
