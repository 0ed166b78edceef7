#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace benchmarks {

/// The processes that a variable in their environment marks: a program with all that it started,
/// also what it has let go of since.
class DesktopProcesses {
  public:
    struct Memory {
        std::size_t processCount = 0;
        /// Proportional set size: a page that n processes share counts one n-th. In bytes.
        std::uint64_t proportional = 0;
        /// What no other process shares, in bytes.
        std::uint64_t exclusive = 0;
        /// How many other processes had a library of Qt loaded then. They share its pages, so that
        /// the proportional size is smaller than without them.
        std::size_t otherQtProcessCount = 0;
    };

    /// What all threads together did over some time.
    struct Activity {
        /// How often a thread went to sleep, that is, how often one had woken up.
        std::uint64_t voluntarySwitches = 0;
        std::uint64_t involuntarySwitches = 0;
        double processorSeconds = 0;
    };

    DesktopProcesses(std::string variable, std::string value)
        : mark_(std::move(variable) + "=" + std::move(value)) {}

    [[nodiscard]] std::vector<pid_t> ids() const;
    [[nodiscard]] Memory memory() const;

    /// Watches for that long. Threads that ended on the way do not count.
    [[nodiscard]] Activity activityDuring(std::chrono::seconds duration) const;

  private:
    std::string mark_;
};

} // namespace benchmarks
