#include "Platform/Linux/SessionBus.h"

#include "Foundation/Interface.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace platform {

namespace {

using Deadline = std::chrono::steady_clock::time_point;

class Socket : foundation::Pinned {
  public:
    Socket() : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}

    ~Socket() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    [[nodiscard]] int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

/// A value of a bus address, where '%' and two hexadecimal digits stand for a byte.
std::optional<std::string> unescaped(std::string_view value) {
    std::string result;
    while (!value.empty()) {
        if (value.front() != '%') {
            result.push_back(value.front());
            value.remove_prefix(1);
            continue;
        }
        unsigned byte = 0;
        if (value.size() < 3 ||
            std::from_chars(value.data() + 1, value.data() + 3, byte, 16).ptr != value.data() + 3) {
            return std::nullopt;
        }
        result.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
        value.remove_prefix(3);
    }
    return result;
}

/// Takes the part before the separator away from `text`, and the separator with it.
std::string_view takePart(std::string_view& text, char separator) {
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), part.size() + 1));
    return part;
}

/// The name for connect() of a socket that an address entry such as "unix:path=/run/bus,guid=0"
/// tells: a path, or a name that begins with a zero byte. None for other kinds of addresses.
std::optional<std::string> socketName(std::string_view entry) {
    if (takePart(entry, ':') != "unix") {
        return std::nullopt;
    }
    while (!entry.empty()) {
        std::string_view value = takePart(entry, ',');
        const std::string_view key = takePart(value, '=');
        if (key == "path") {
            return unescaped(value);
        }
        if (key == "abstract") {
            const auto name = unescaped(value);
            return name ? std::optional(std::string(1, '\0') + *name) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool connectTo(const Socket& socket, std::string_view name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.empty() || name.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(static_cast<char*>(address.sun_path), name.data(), name.size());
    const bool isPath = name.front() != '\0';
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + (isPath ? 1 : 0));
    // A local socket is connected at once, or its owner is too far behind with accepting.
    return connect(socket.descriptor(),
                   reinterpret_cast<const sockaddr*>(&address), // NOLINT: so it is meant
                   length) == 0;
}

/// Begins the conversation that opens a connection and leaves it at the bus's first word.
bool answers(const Socket& socket, Deadline deadline) {
    std::string greeting("\0AUTH EXTERNAL ", 15);
    for (const char digit : std::to_string(getuid())) {
        greeting += '3'; // The user's number in decimal ASCII, and that in hexadecimal.
        greeting += digit;
    }
    greeting += "\r\n";
    const ssize_t sent = send(socket.descriptor(), greeting.data(), greeting.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(greeting.size())) {
        return false;
    }
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd waited{.fd = socket.descriptor(), .events = POLLIN, .revents = 0};
        const int ready = left.count() > 0 ? poll(&waited, 1, static_cast<int>(left.count())) : 0;
        if (ready > 0) {
            break;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
    std::array<char, 2> answer{};
    return recv(socket.descriptor(), answer.data(), answer.size(), 0) == 2 && answer[0] == 'O' &&
           answer[1] == 'K';
}

bool answersAt(std::string_view entry, Deadline deadline) {
    const auto name = socketName(entry);
    const Socket socket;
    return name && socket.descriptor() >= 0 && connectTo(socket, *name) &&
           answers(socket, deadline);
}

std::string sessionBusAddresses() {
    const char* addresses = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (addresses != nullptr && *addresses != '\0') {
        return addresses;
    }
    const char* runtimeFolder = std::getenv("XDG_RUNTIME_DIR");
    if (runtimeFolder == nullptr || *runtimeFolder != '/') {
        return {};
    }
    std::string address = "unix:path=";
    for (const char character : std::string(runtimeFolder) + "/bus") {
        // What else may stand for itself is rare in such a path.
        const bool isPlain = (character >= '0' && character <= '9') ||
                             (character >= 'A' && character <= 'Z') ||
                             (character >= 'a' && character <= 'z') || character == '/' ||
                             character == '.' || character == '-' || character == '_';
        if (isPlain) {
            address += character;
        } else {
            constexpr std::string_view digits = "0123456789abcdef";
            const auto byte = static_cast<unsigned char>(character);
            address += {'%', digits[byte >> 4U], digits[byte & 0x0FU]};
        }
    }
    return address;
}

} // namespace

std::optional<std::string> findSessionBus(std::chrono::milliseconds limit) {
    const Deadline deadline = std::chrono::steady_clock::now() + limit;
    const std::string addresses = sessionBusAddresses();
    std::string_view rest = addresses;
    while (!rest.empty()) {
        const std::string_view entry = takePart(rest, ';');
        if (answersAt(entry, deadline)) {
            return std::string(entry);
        }
    }
    return std::nullopt;
}

} // namespace platform
