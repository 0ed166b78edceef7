#include "Platform/Posix/PosixServices.h"

#include <fcntl.h>

#include <cerrno>
#include <cstddef>
#include <string>

namespace platform {

FileStandardOutput::FileStandardOutput(int descriptor)
    : descriptor_(descriptor), isOpen_(fcntl(descriptor, F_GETFD) != -1) {}

void FileStandardOutput::writeLine(std::string_view text) {
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

} // namespace platform
