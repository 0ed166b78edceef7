#pragma once

#include "Platform/Application.h"
#include "Platform/Time.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

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
    explicit FileStandardOutput(int descriptor = STDOUT_FILENO)
        : descriptor_(descriptor), isOpen_(fcntl(descriptor, F_GETFD) != -1) {}

    void writeLine(std::string_view text) override {
        if (!isOpen_) {
            return;
        }
        const std::string line = std::string(text).append("\n");
        std::string_view rest = line;
        while (!rest.empty()) {
            const ssize_t count = write(descriptor_, rest.data(), rest.size());
            if (count >= 0) {
                rest.remove_prefix(static_cast<std::size_t>(count));
            } else if (errno != EINTR) {
                return;
            }
        }
    }

  private:
    int descriptor_;
    bool isOpen_;
};

} // namespace platform
