#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

namespace foundation {

/// Progress is logged at `debug`, failures at `error`.
enum class LogLevel : std::uint8_t { debug, error };

/// One message as its call site gave it. The views are valid only during LogChannel::write: a
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

/// Where the records of one category go. Any thread. write() never fails towards the caller: a
/// record that cannot be kept is dropped.
class LogChannel : public Interface {
  public:
    [[nodiscard]] virtual bool isEnabled(LogLevel level) const noexcept = 0;
    virtual void write(const LogRecord& record) noexcept = 0;
};

/// The system's log. Outlives every Logger made from it.
class LogSink : public Interface {
  public:
    /// The channel for a category of a subsystem, the same one for the same pair. Owned by the
    /// sink. Main thread only.
    virtual LogChannel& channel(std::string_view subsystem, std::string_view category) = 0;
};

} // namespace foundation
