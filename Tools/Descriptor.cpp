#include "Tools/Descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace tools {

namespace {

/// Some systems reject writes larger than INT_MAX.
constexpr std::size_t largestWriteSize = std::size_t{1} << 30U;

/// Whether to retry a call that failed: it was interrupted, or another program made the descriptor
/// non-blocking. In the latter case, waits until the descriptor is ready.
bool canTryAgain(int descriptor, short events) {
    if (errno == EAGAIN || errno == EWOULDBLOCK) {
        pollfd waiting{.fd = descriptor, .events = events, .revents = 0};
        return poll(&waiting, 1, -1) >= 0 || errno == EINTR;
    }
    return errno == EINTR;
}

} // namespace

void throwSystemError(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::ptrdiff_t readSome(int descriptor, std::span<char> buffer) {
    ssize_t count = 0;
    do {
        count = read(descriptor, buffer.data(), buffer.size());
    } while (count < 0 && canTryAgain(descriptor, POLLIN));
    return count;
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count =
            write(descriptor, text.data(), std::min(text.size(), largestWriteSize));
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (!canTryAgain(descriptor, POLLOUT)) {
            return false;
        }
    }
    return true;
}

} // namespace tools
