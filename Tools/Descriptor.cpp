#include "Tools/Descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace tools {

namespace {

constexpr std::size_t readSize = std::size_t{1} << 20U;
/// Some systems refuse to write more than fits into an int.
constexpr std::size_t largestWriteSize = std::size_t{1} << 30U;

/// Whether a call that failed with `error` is to be made again: it was interrupted, or another
/// program has made the descriptor non-blocking, in which case this waits for it.
bool canTryAgain(int error, int descriptor, short events) {
    if (error == EAGAIN || error == EWOULDBLOCK) {
        pollfd waiting{.fd = descriptor, .events = events, .revents = 0};
        return poll(&waiting, 1, -1) >= 0 || errno == EINTR;
    }
    return error == EINTR;
}

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
        if (count < 0 && !canTryAgain(error, descriptor, POLLIN)) {
            return {error, std::generic_category()};
        }
    }
}

std::error_code writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count =
            write(descriptor, text.data(), std::min(text.size(), largestWriteSize));
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (const int error = errno; !canTryAgain(error, descriptor, POLLOUT)) {
            return {error, std::generic_category()};
        }
    }
    return {};
}

} // namespace tools
