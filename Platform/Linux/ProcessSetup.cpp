#include "Platform/Linux/ProcessSetup.h"

#include "Foundation/TextBuffer.h"
#include "Platform/Application.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <string>

namespace platform {

void adviseHugePages(char* block, std::size_t size) {
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    // The first page is the block's, too: it holds the allocator's header of a few bytes.
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(block) % pageSize;
    static_cast<void>(madvise(block - offset, size + offset, MADV_HUGEPAGE));
}

void prepareProcess() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // open() returns the lowest free number, and the lower ones are taken by now.
            static_cast<void>(open("/dev/null", O_RDWR));
        }
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    // One heap for all threads: with one each, the few allocations of the others add up for days.
    static_cast<void>(mallopt(M_ARENA_MAX, 1));
    // A fixed threshold: by default, freeing a large text raises it, and the heap keeps the memory.
    constexpr int largeTextSize = 256 * 1024;
    static_cast<void>(mallopt(M_MMAP_THRESHOLD, largeTextSize));
    foundation::TextBuffer::setLargeBlockHook(adviseHugePages);
}

InstanceLock::InstanceLock(const std::filesystem::path& path)
    : descriptor_(
          open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR)) {}

InstanceLock::~InstanceLock() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

std::filesystem::path InstanceLock::defaultPath() {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr || *folder != '/') {
        return {};
    }
    return std::filesystem::path(folder) / (std::string(applicationId) + ".lock");
}

bool InstanceLock::tryToLock() const {
    return flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace platform
