#include "benchmarks/DesktopProcesses.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>
#include <thread>

namespace benchmarks {

namespace {

namespace fs = std::filesystem;

std::vector<pid_t> numbersIn(const fs::path& folder) {
    std::vector<pid_t> numbers;
    std::error_code isGone;
    for (fs::directory_iterator entry(folder, isGone), end; !isGone && entry != end;
         entry.increment(isGone)) {
        const std::string name = entry->path().filename();
        if (std::all_of(
                name.begin(), name.end(), [](unsigned char c) { return isdigit(c) != 0; })) {
            numbers.push_back(std::stoi(name));
        }
    }
    return numbers;
}

fs::path folderOf(pid_t id) {
    return fs::path("/proc") / std::to_string(id);
}

/// The sum of the lines with this name, 0 if there are none.
std::uint64_t lineIn(const fs::path& path, const std::string& name) {
    std::ifstream file(path);
    std::uint64_t value = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name + ":")) {
            value += std::stoull(line.substr(name.size() + 1));
        }
    }
    return value;
}

bool hasQt(pid_t id) {
    std::ifstream file(folderOf(id) / "maps");
    for (std::string line; std::getline(file, line);) {
        if (line.find("/libQt") != std::string::npos) {
            return true;
        }
    }
    return false;
}

DesktopProcesses::Activity operator-(const DesktopProcesses::Activity& left,
                                     const DesktopProcesses::Activity& right) {
    return {.voluntarySwitches = left.voluntarySwitches - right.voluntarySwitches,
            .involuntarySwitches = left.involuntarySwitches - right.involuntarySwitches,
            .processorSeconds = left.processorSeconds - right.processorSeconds};
}

using ByThread = std::map<pid_t, DesktopProcesses::Activity>;

ByThread activityOf(const std::vector<pid_t>& processes) {
    ByThread threads;
    for (const pid_t process : processes) {
        for (const pid_t thread : numbersIn(folderOf(process) / "task")) {
            const fs::path folder = folderOf(process) / "task" / std::to_string(thread);
            std::uint64_t nanoseconds = 0;
            std::ifstream(folder / "schedstat") >> nanoseconds;
            threads[thread] = {
                .voluntarySwitches = lineIn(folder / "status", "voluntary_ctxt_switches"),
                .involuntarySwitches = lineIn(folder / "status", "nonvoluntary_ctxt_switches"),
                .processorSeconds = static_cast<double>(nanoseconds) / 1e9};
        }
    }
    return threads;
}

} // namespace

std::vector<pid_t> DesktopProcesses::ids() const {
    std::vector<pid_t> found;
    for (const pid_t id : numbersIn("/proc")) {
        std::ifstream file(folderOf(id) / "environ", std::ios::binary);
        for (std::string variable; std::getline(file, variable, '\0');) {
            if (variable == mark_) {
                found.push_back(id);
                break;
            }
        }
    }
    return found;
}

DesktopProcesses::Memory DesktopProcesses::memory() const {
    Memory memory;
    const std::vector<pid_t> own = ids();
    for (const pid_t id : numbersIn("/proc")) {
        if (std::find(own.begin(), own.end(), id) == own.end() && hasQt(id)) {
            ++memory.otherQtProcessCount;
        }
    }
    for (const pid_t id : own) {
        const fs::path file = folderOf(id) / "smaps_rollup";
        ++memory.processCount;
        memory.proportional += lineIn(file, "Pss") * 1024;
        const std::uint64_t dirty = lineIn(file, "Private_Dirty") * 1024;
        memory.exclusive += lineIn(file, "Private_Clean") * 1024 + dirty;
        memory.dirty += dirty;
    }
    return memory;
}

DesktopProcesses::Activity DesktopProcesses::activityDuring(std::chrono::seconds duration) const {
    ByThread before = activityOf(ids());
    std::this_thread::sleep_for(duration);
    Activity sum;
    for (const auto& [thread, after] : activityOf(ids())) {
        const Activity own = after - before[thread];
        sum.voluntarySwitches += own.voluntarySwitches;
        sum.involuntarySwitches += own.involuntarySwitches;
        sum.processorSeconds += own.processorSeconds;
    }
    return sum;
}

} // namespace benchmarks
