#pragma once

#include "Foundation/Interface.h"

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace platform {

/// Keeps a second instance of the program from running, also where the two do not find the same
/// session bus or find none: a lock on a file, which the system drops with the process, however
/// that ends. Main thread only.
class InstanceLock : foundation::Pinned {
  public:
    enum class Result : std::uint8_t {
        acquired,
        taken,      ///< Another process keeps it.
        unavailable ///< The file cannot be locked, so nobody can tell.
    };

    /// Makes the file where there is none, readable for the user alone; it stays when the lock
    /// goes. Waits at most `patience` for a process that holds the lock to give it back.
    explicit InstanceLock(const std::filesystem::path& path,
                          std::chrono::milliseconds patience = {});

    /// Gives the lock back.
    ~InstanceLock();

    /// com.app.pastewise.lock in $XDG_RUNTIME_DIR, which ends with the user's last session. Empty,
    /// a path that cannot be locked, where that is unset or not absolute.
    [[nodiscard]] static std::filesystem::path defaultPath();

    [[nodiscard]] Result result() const { return result_; }

  private:
    int descriptor_ = -1;
    Result result_ = Result::unavailable;
};

} // namespace platform
