#pragma once

#include "Platform/Application.h"
#include "Platform/Time.h"

#include <unistd.h>

#include <chrono>

namespace platform {

/// The system's wall clock. Main thread only.
class SystemClock final : public Clock {
  public:
    [[nodiscard]] foundation::Date now() const override {
        return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
    }
};

/// Standard output as a file descriptor. If it is closed when the object is made, nothing is ever
/// written: the number may later belong to another file, so the object is made before the program
/// opens any. The program ignores SIGPIPE. Main thread only.
class FileStandardOutput final : public StandardOutput {
  public:
    /// Does not own the descriptor.
    explicit FileStandardOutput(int descriptor = STDOUT_FILENO);

    void writeLine(std::string_view text) override;

  private:
    int descriptor_;
    bool isOpen_;
};

} // namespace platform
