#include "Platform/Linux/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <thread>

namespace platform {

namespace {

using namespace std::chrono_literals;

InstanceLock::Result tryToLock(int descriptor) {
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        return InstanceLock::Result::acquired;
    }
    return errno == EWOULDBLOCK ? InstanceLock::Result::taken : InstanceLock::Result::unavailable;
}

} // namespace

InstanceLock::InstanceLock(const std::filesystem::path& path, std::chrono::milliseconds patience)
    : descriptor_(
          open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR)) {
    if (descriptor_ < 0) {
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + patience;
    result_ = tryToLock(descriptor_);
    while (result_ == Result::taken && std::chrono::steady_clock::now() < deadline) {
        // The system could wait by itself, but not for so long and no longer.
        std::this_thread::sleep_for(20ms);
        result_ = tryToLock(descriptor_);
    }
}

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
    return std::filesystem::path(folder) / "com.app.pastewise.lock";
}

} // namespace platform
