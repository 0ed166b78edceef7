#include "Tools/Descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace tools {

namespace {

constexpr std::size_t readSize = std::size_t{1} << 20U;
/// Some systems reject writes larger than INT_MAX.
constexpr std::size_t largestWriteSize = std::size_t{1} << 30U;

/// Whether to retry a call that failed with `error`: it was interrupted, or another program made
/// the descriptor non-blocking. In the latter case, waits until the descriptor is ready.
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
        char* buffer = text.appendUninitialised(readSize);
        const ssize_t count = read(descriptor, buffer, readSize);
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
