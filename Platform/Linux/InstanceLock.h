#pragma once

#include "Foundation/Interface.h"

#include <filesystem>

namespace platform {

/// Lets only one process of the user run, also if two find different session buses or none. The
/// kernel drops this lock on a file with the process, however that ends, so a lock is never stale.
/// Main thread only.
class InstanceLock : foundation::Pinned {
  public:
    /// Makes the file if it is missing, readable for the user alone. It stays when the lock goes.
    explicit InstanceLock(const std::filesystem::path& path = defaultPath());

    /// Releases the lock.
    ~InstanceLock();

    /// A file in $XDG_RUNTIME_DIR; empty, which cannot be locked, if that is unset or not absolute.
    [[nodiscard]] static std::filesystem::path defaultPath();

    /// Returns false while another process holds the lock, and true if this process holds it or the
    /// file cannot be locked at all. May be called again.
    [[nodiscard]] bool tryToLock() const;

  private:
    int descriptor_;
};

} // namespace platform
