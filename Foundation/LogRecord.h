#pragma once

#include "Foundation/LogLevel.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace foundation {

/// One message as its call site gave it. Views are valid only while LogChannel::write runs: a
/// channel that keeps a record copies what it needs.
struct LogRecord {
    using Value = std::variant<bool, std::int64_t, std::uint64_t, double, std::string_view>;

    std::string_view subsystem;
    std::string_view category;
    LogLevel level;
    /// The format as written at the call site, privacy marks included: see LogFormat.
    std::string_view format;
    /// One value per placeholder of `format`, in order.
    std::span<const Value> values;
};

} // namespace foundation
