#pragma once

#include "Platform/Application.h"

#include <unistd.h>

namespace platform {

/// Standard output as an open file. Where it is closed when the object is made, nothing is ever
/// written: the number may soon belong to another file, so the object is made before the program
/// opens any. The program ignores SIGPIPE. Main thread only.
class FileStandardOutput final : public StandardOutput {
  public:
    /// The descriptor stays the caller's.
    explicit FileStandardOutput(int descriptor = STDOUT_FILENO);

    void writeLine(std::string_view text) override;

  private:
    int descriptor_;
    bool isOpen_;
};

} // namespace platform
