#pragma once

#include "Foundation/Interface.h"

#include <cstddef>
#include <filesystem>

namespace platform {

/// Makes the process fit to run for weeks. Called first, before a descriptor is opened or a thread
/// is started.
///
/// Opens /dev/null for each standard descriptor that the process was started without: otherwise
/// the connection to the display would get the number, and log lines would be written into it.
/// Ignores SIGPIPE, so that logging into a closed pipe does not end the process. Keeps the heap
/// from growing with the number of threads and with large texts, and asks for huge pages for the
/// largest ones.
void prepareProcess();

/// Asks for huge pages for a block that has a mapping of its own. Without effect where the system
/// has none to offer.
void adviseHugePages(char* block, std::size_t size);

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
