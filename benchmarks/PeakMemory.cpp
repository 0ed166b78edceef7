#include "benchmarks/PeakMemory.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <string>

namespace benchmarks {

namespace {

/// The value of a line in /proc/self/status in bytes, or 0.
std::size_t statusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == name) {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

std::size_t growthDuring(const std::function<void()>& action) {
    // Otherwise the action would reuse memory that the parent has freed.
    malloc_trim(0);
    // Resets the peak to the current resident size.
    std::ofstream("/proc/self/clear_refs") << "5";
    const std::size_t before = statusBytes("VmRSS:");
    action();
    const std::size_t peak = statusBytes("VmHWM:");
    return before == 0 || peak < before ? 0 : peak - before;
}

} // namespace

std::optional<std::size_t> peakMemoryOf(const std::function<void()>& action) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return std::nullopt;
    }
    const pid_t child = fork();
    if (child == 0) {
        const std::size_t growth = growthDuring(action);
        const bool isSent = write(ends[1], &growth, sizeof growth) == sizeof growth;
        _exit(isSent ? 0 : 1);
    }
    close(ends[1]);
    std::size_t growth = 0;
    const bool isKnown = child > 0 && read(ends[0], &growth, sizeof growth) == sizeof growth;
    close(ends[0]);
    if (child > 0) {
        waitpid(child, nullptr, 0);
    }
    return isKnown && growth > 0 ? std::optional(growth) : std::nullopt;
}

} // namespace benchmarks
