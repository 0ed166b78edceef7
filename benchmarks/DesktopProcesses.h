#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace benchmarks {

/// The processes marked by an environment variable: a program and all its descendants, including
/// detached ones.
class DesktopProcesses {
  public:
    struct Memory {
        std::size_t processCount = 0;
        /// Proportional set size in bytes: a page shared by n processes counts 1/n.
        std::uint64_t proportional = 0;
        /// Memory not shared with other processes, in bytes.
        std::uint64_t exclusive = 0;
        /// The part of it that was written to: unlike the proportional size, independent of what
        /// else runs.
        std::uint64_t dirty = 0;
        /// Other processes with Qt loaded. They share its pages, which reduces the proportional
        /// size.
        std::size_t otherQtProcessCount = 0;
    };

    /// The activity of all threads together.
    struct Activity {
        /// How often a thread went to sleep, and so how often one woke up.
        std::uint64_t voluntarySwitches = 0;
        std::uint64_t involuntarySwitches = 0;
        double processorSeconds = 0;
    };

    DesktopProcesses(std::string variable, std::string value)
        : mark_(std::move(variable) + "=" + std::move(value)) {}

    [[nodiscard]] std::vector<pid_t> ids() const;
    [[nodiscard]] Memory memory() const;

    /// Blocks for the duration. Threads that end meanwhile do not count.
    [[nodiscard]] Activity activityDuring(std::chrono::seconds duration) const;

  private:
    std::string mark_;
};

} // namespace benchmarks
