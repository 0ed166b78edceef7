#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace foundation {

/// Stops the program because of a programming error: writes "Fatal error: " and the message to
/// standard error and aborts. The message is the program's own text and never holds anything that
/// a user copied. Any thread.
[[noreturn]] inline void fatalError(std::string_view message) {
    std::fputs("Fatal error: ", stderr);
    std::fwrite(message.data(), 1, message.size(), stderr);
    std::fputc('\n', stderr);
    std::abort();
}

} // namespace foundation
