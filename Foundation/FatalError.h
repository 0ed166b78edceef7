#pragma once

#include <string_view>

namespace foundation {

/// Stops the program because of a programming error that must not be survived: writes
/// "Fatal error: " and the message to standard error and aborts. The message is the program's own
/// text and never holds anything that a user copied. Callable from any thread.
[[noreturn]] void fatalError(std::string_view message);

} // namespace foundation
