#pragma once

#include <chrono>

namespace foundation {

/// An instant, in microseconds since the beginning of 1970 in UTC, leap seconds left out.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

} // namespace foundation
