#include "tests/Contract/Linux/PairOfX11Pasteboards.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace testing_support {

namespace {

/// A command to the writing process, which answers each with one byte, 1 on success. The text
/// follows a `set` command.
struct Order {
    enum class Kind : std::uint8_t { clear, set };

    Kind kind = Kind::clear;
    platform::PasteboardType type = platform::PasteboardType::string;
    std::size_t size = 0;
};

/// Transfers `size` bytes with read or write. False if the other end is closed.
template <typename Move, typename Bytes>
bool moveAll(Move move, int descriptor, Bytes* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = move(descriptor, bytes, size);
        if (count > 0) {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool sendAll(int descriptor, const void* bytes, std::size_t size) {
    return moveAll(write, descriptor, static_cast<const char*>(bytes), size);
}

bool receiveAll(int descriptor, void* bytes, std::size_t size) {
    return moveAll(read, descriptor, static_cast<char*>(bytes), size);
}

/// Runs the writing process: executes commands until the other end is closed.
void writeUntilClosed(const std::string& display, int descriptor) {
    X11PasteboardOnALoop world(display);
    const auto execute = [&] {
        Order order;
        if (!receiveAll(descriptor, &order, sizeof order)) {
            _exit(0);
        }
        bool isDone = true;
        if (order.kind == Order::Kind::clear) {
            world.pasteboard().clearContents();
        } else {
            foundation::TextBuffer text;
            if (order.size > 0 &&
                !receiveAll(descriptor, text.appendUninitialised(order.size), order.size)) {
                _exit(1);
            }
            isDone = world.pasteboard().setString(std::move(text), order.type);
        }
        const char answer = isDone ? 1 : 0;
        sendAll(descriptor, &answer, 1);
    };
    const auto watch = world.loop().watchReadable(descriptor, execute);
    QCoreApplication::exec();
}

bool give(int descriptor, const Order& order, std::string_view text) {
    char answer = 0;
    return sendAll(descriptor, &order, sizeof order) &&
           sendAll(descriptor, text.data(), text.size()) && receiveAll(descriptor, &answer, 1) &&
           answer == 1;
}

} // namespace

PairOfX11Pasteboards::PairOfX11Pasteboards() {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw std::runtime_error("cannot create a socket");
    }
    writer_ = fork();
    if (writer_ < 0) {
        throw std::runtime_error("cannot start a process");
    }
    if (writer_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        close(ends[0]);
        writeUntilClosed(server_.display(), ends[1]);
        _exit(1);
    }
    close(ends[1]);
    descriptor_ = ends[0];
    reader_ = std::make_unique<X11PasteboardOnALoop>(server_.display());
}

PairOfX11Pasteboards::~PairOfX11Pasteboards() {
    close(descriptor_);
    kill(writer_, SIGKILL);
    waitpid(writer_, nullptr, 0);
}

void PairOfX11Pasteboards::clearContents() {
    if (!give(descriptor_, {.kind = Order::Kind::clear, .type = {}, .size = 0}, {})) {
        throw std::runtime_error("the writing process has exited");
    }
}

bool PairOfX11Pasteboards::setString(foundation::TextBuffer text, platform::PasteboardType type) {
    return give(
        descriptor_, {.kind = Order::Kind::set, .type = type, .size = text.size()}, text.view());
}

std::optional<foundation::TextBuffer> PairOfX11Pasteboards::string(platform::PasteboardType type) {
    return reader_->pasteboard().string(type);
}

} // namespace testing_support
