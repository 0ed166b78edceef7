#pragma once

#include "Foundation/Interface.h"
#include "Foundation/LogLevel.h"
#include "Foundation/LogRecord.h"

#include <string_view>

namespace foundation {

/// Where the records of one category go.
///
/// Threads: both operations may be called from any thread. write() never fails towards the
/// caller: a record that cannot be kept is dropped.
class LogChannel : public Interface {
  public:
    [[nodiscard]] virtual bool isEnabled(LogLevel level) const noexcept = 0;
    virtual void write(const LogRecord& record) noexcept = 0;
};

/// The system's log. Supplied by each system; outlives every Logger made from it.
class LogSink : public Interface {
  public:
    /// The channel for a category of a subsystem, the same one for the same pair. The sink keeps
    /// it for as long as it lives itself. Main thread only.
    virtual LogChannel& channel(std::string_view subsystem, std::string_view category) = 0;
};

} // namespace foundation
