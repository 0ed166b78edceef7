#include "Platform/Linux/InstanceLock.h"

#include "Platform/Application.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace platform {

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
