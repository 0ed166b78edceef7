#pragma once

#include "Foundation/Logger.h"

#include <string>
#include <string_view>
#include <utility>

namespace foundation {

/// Makes the loggers of one subsystem, which is the application's identifier. Outlives every
/// logger that it made; does not own the sink. Main thread only.
class LoggerFactory {
  public:
    LoggerFactory(LogSink& sink, std::string subsystem)
        : sink_(sink), subsystem_(std::move(subsystem)) {}

    LoggerFactory(const LoggerFactory&) = delete;
    LoggerFactory& operator=(const LoggerFactory&) = delete;
    LoggerFactory(LoggerFactory&&) = delete;
    LoggerFactory& operator=(LoggerFactory&&) = delete;
    ~LoggerFactory() = default;

    /// `category` is a text that lives as long as the program: the name of the class that logs.
    [[nodiscard]] Logger logger(std::string_view category) const {
        return {sink_, subsystem_, category};
    }

  private:
    LogSink& sink_;
    std::string subsystem_;
};

} // namespace foundation
