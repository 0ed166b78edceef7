#pragma once

#include "Foundation/Interface.h"
#include "Foundation/LogFormat.h"
#include "Foundation/LogSink.h"

#include <array>
#include <concepts>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace foundation {

/// One class's handle on the log: a subsystem (the application) and a category (the class).
///
/// Call sites read like printf, with the privacy of each value in the format: see LogFormat. If the
/// level is off, nothing is formatted and a value given as a function is not computed. Copyable;
/// the sink and both names outlive it. Any thread.
class Logger {
  public:
    Logger(LogSink& sink, std::string_view subsystem, std::string_view category)
        : channel_(&sink.channel(subsystem, category)),
          subsystem_(subsystem),
          category_(category) {}

    [[nodiscard]] bool isEnabled(LogLevel level) const noexcept {
        return channel_->isEnabled(level);
    }

    template <typename... Values>
    void debug(LogFormat<std::type_identity_t<Values>...> format, const Values&... values) const {
        write(LogLevel::debug, format.text(), values...);
    }

    template <typename... Values>
    void error(LogFormat<std::type_identity_t<Values>...> format, const Values&... values) const {
        write(LogLevel::error, format.text(), values...);
    }

  private:
    template <typename... Values>
    void write(LogLevel level, std::string_view format, const Values&... values) const {
        if (!channel_->isEnabled(level)) {
            return;
        }
        // Keeps the results of functions alive while the record points to them.
        const auto evaluated = std::tuple<decltype(evaluate(values))...>{evaluate(values)...};
        const auto record = std::apply(
            [](const auto&... value) {
                return std::array<LogRecord::Value, sizeof...(value)>{recordValue(value)...};
            },
            evaluated);
        channel_->write({.subsystem = subsystem_,
                         .category = category_,
                         .level = level,
                         .format = format,
                         .values = record});
    }

    template <typename Value>
    static decltype(auto) evaluate(const Value& value) {
        if constexpr (std::invocable<const Value&>) {
            return value();
        } else {
            return static_cast<const Value&>(value);
        }
    }

    template <typename Value>
    static LogRecord::Value recordValue(const Value& value) {
        if constexpr (std::same_as<Value, bool>) {
            return value;
        } else if constexpr (std::signed_integral<Value>) {
            return static_cast<std::int64_t>(value);
        } else if constexpr (std::unsigned_integral<Value>) {
            return static_cast<std::uint64_t>(value);
        } else if constexpr (std::floating_point<Value>) {
            return static_cast<double>(value);
        } else {
            return std::string_view(value);
        }
    }

    LogChannel* channel_;
    std::string_view subsystem_;
    std::string_view category_;
};

/// Makes the loggers of one subsystem, the application's identifier. Outlives the loggers that it
/// made; does not own the sink. Main thread only.
class LoggerFactory : Pinned {
  public:
    LoggerFactory(LogSink& sink, std::string subsystem)
        : sink_(sink), subsystem_(std::move(subsystem)) {}

    /// `category` is the name of the class that logs, a text that lives as long as the program.
    [[nodiscard]] Logger logger(std::string_view category) const {
        return {sink_, subsystem_, category};
    }

  private:
    LogSink& sink_;
    std::string subsystem_;
};

} // namespace foundation
