#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tools {

/// Throws a std::system_error with errno; its text is `what`, a colon and the system's message.
[[noreturn]] void throwSystemError(const std::string& what);

/// Waits for bytes of a file, pipe or terminal and reads as many as there are and fit into
/// `buffer`. Returns 0 at the end of the input, and a negative number with errno on failure.
[[nodiscard]] std::ptrdiff_t readSome(int descriptor, std::span<char> buffer);

/// Writes the whole text. Returns false with errno on failure. Callers ignore SIGPIPE to get EPIPE
/// when the reader has closed a pipe.
[[nodiscard]] bool writeAll(int descriptor, std::string_view text);

} // namespace tools
