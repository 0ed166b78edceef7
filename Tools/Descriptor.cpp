#include "Tools/Descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace tools {

namespace {

constexpr std::size_t readSize = std::size_t{1} << 20U;

} // namespace

std::error_code readToEnd(int descriptor, foundation::TextBuffer& text) {
    while (true) {
        const std::size_t sizeBefore = text.size();
        char* room = text.appendUninitialised(readSize);
        const ssize_t count = read(descriptor, room, readSize);
        const int error = errno;
        text.truncate(sizeBefore + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count == 0) {
            return {};
        }
        if (count < 0 && error != EINTR) {
            return {error, std::generic_category()};
        }
    }
}

std::error_code writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(descriptor, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return {errno, std::generic_category()};
        }
    }
    return {};
}

} // namespace tools
