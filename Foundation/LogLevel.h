#pragma once

#include <cstdint>

namespace foundation {

/// How much a log record matters: progress is told at `debug`, failures at `error`.
enum class LogLevel : std::uint8_t { debug, error };

} // namespace foundation
