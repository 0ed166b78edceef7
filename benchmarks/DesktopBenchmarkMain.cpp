// Start-up time, latency and memory on a desktop, compared with CopyQ doing the same conversion on
// the same key: pastewise_desktop_benchmark [--json FILE]
//
// Each program runs on a private X server with a session bus, a window manager and a tray. The run
// takes about three minutes. Missed goals are not failures.

#include "Foundation/TextBuffer.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "benchmarks/DesktopPeer.h"
#include "benchmarks/DesktopSubject.h"
#include "benchmarks/Inputs.h"
#include "benchmarks/Timing.h"
#include "tests/Support/ChildProcess.h"

#include <nlohmann/json.hpp>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

using Json = nlohmann::ordered_json;
using Tray = DesktopSubject::Tray;

constexpr std::size_t startRounds = 15;
constexpr double startGoal = 2.5;
constexpr double memoryOfPeerGoal = 1.0 / 3;
constexpr double memoryOfBareTrayGoal = 1.35;
constexpr std::chrono::seconds quietTime{2};
constexpr std::chrono::seconds restTime{30};

struct PasteGoal {
    std::size_t lines = 0;
    std::size_t rounds = 0;
    std::optional<double> timesFaster = {};
};

constexpr std::array<PasteGoal, 3> pasteGoals{
    {{30, 30, 8}, {10'000, 20, 4}, {100'000, 10, std::nullopt}}};
/// Of the time of an owner of ready-made HTML.
constexpr double pasteOfBareOwnerGoal = 1.3;

constexpr std::uint64_t dirtyGoal = 4'000'000;
constexpr std::size_t conversionCount = 1000;
constexpr std::uint64_t growthGoal = 500'000;

/// The program being measured: ours or, if installed, the peer.
enum class Who : std::uint8_t { own, peer };

const char* nameOf(Who who) {
    return who == Who::own ? "Pastewise" : "CopyQ";
}

bool isInstalled(const std::string& program) {
    testing_support::ChildProcess which({"which", program});
    return which.waitForExit() == 0;
}

std::unique_ptr<DesktopSubject> makeSubject(Who who, Tray tray) {
    if (who == Who::own) {
        return std::make_unique<DesktopSubject>(std::vector<std::string>{PASTEWISE_PROGRAM}, tray);
    }
    auto subject = std::make_unique<DesktopSubject>(std::vector<std::string>{"copyq"}, tray);
    writePeerConfiguration(subject->configurationFolder());
    return subject;
}

std::string withDecimals(int count, double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", count, value);
    return text.data();
}

const char* verdict(bool isMet) {
    return isMet ? "met" : "missed";
}

void printRow(const std::string& what,
              const std::string& own,
              const std::string& other,
              const std::string& ratio,
              const std::string& goal) {
    std::printf("%-42s %12s %12s %8s  %s\n",
                what.c_str(),
                own.c_str(),
                other.c_str(),
                ratio.c_str(),
                goal.c_str());
    std::fflush(stdout);
}

/// The times of one measurement: ours, then the peer's if there is one.
using Times = std::vector<std::vector<double>>;

/// Prints a row of times. The goal is the ratio of the peer's time to ours.
Json reportTimes(const std::string& what, const Times& times, std::optional<double> goal) {
    constexpr std::array columns{"pastewiseSeconds", "copyqSeconds"};
    Json row{{"what", what}};
    std::array<std::string, 2> texts;
    bool isComplete = times.size() == columns.size();
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (times[i].empty()) {
            texts[i] = "none";
            isComplete = false;
        } else {
            row[columns[i]] = median(times[i]);
            texts[i] = withDecimals(2, median(times[i]) * 1e3) + " ms";
        }
    }
    std::string ratioText;
    std::string goalText;
    if (isComplete) {
        const double ratio = median(times[1]) / median(times[0]);
        ratioText = withDecimals(1, ratio);
        row["timesFaster"] = ratio;
        if (goal) {
            goalText = withDecimals(1, *goal) + " times faster: " + verdict(ratio >= *goal);
            row["goal"] = *goal;
            row["goalMet"] = ratio >= *goal;
        }
    }
    printRow(what, texts[0], texts[1], ratioText, goalText);
    return row;
}

/// Runs every subject once per round, reversing the order each round.
void alternate(const std::vector<std::unique_ptr<DesktopSubject>>& subjects,
               std::size_t rounds,
               const std::function<void(DesktopSubject&, std::size_t)>& turn) {
    for (std::size_t round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < subjects.size(); ++i) {
            const std::size_t index = round % 2 == 0 ? i : subjects.size() - 1 - i;
            turn(*subjects[index], index);
        }
    }
}

std::vector<std::unique_ptr<DesktopSubject>> makeSubjects(const std::vector<Who>& all, Tray tray) {
    std::vector<std::unique_ptr<DesktopSubject>> subjects;
    subjects.reserve(all.size());
    for (const Who who : all) {
        subjects.push_back(makeSubject(who, tray));
    }
    return subjects;
}

Json measureStart(const std::vector<Who>& all) {
    const auto subjects = makeSubjects(all, Tray::reporting);
    std::vector<std::chrono::milliseconds> iconLimits(all.size());
    // The first start has cold files and creates the configuration. Subjects that show no icon are
    // not waited for in later starts.
    alternate(subjects, 1, [&](DesktopSubject& subject, std::size_t i) {
        const bool hasIcon = subject.timeStart(testing_support::patience).icon.has_value();
        iconLimits[i] = hasIcon ? testing_support::patience : std::chrono::milliseconds(0);
        subject.stop();
    });
    Times hotKey(all.size());
    Times icon(all.size());
    alternate(subjects, startRounds, [&](DesktopSubject& subject, std::size_t i) {
        const DesktopSubject::StartTimes times = subject.timeStart(iconLimits[i]);
        hotKey[i].push_back(times.hotKey);
        if (times.icon) {
            icon[i].push_back(*times.icon);
        } else if (iconLimits[i].count() > 0) {
            throw std::runtime_error(std::string(nameOf(all[i])) + " shows an icon only sometimes");
        }
        subject.stop();
    });
    Json rows;
    rows.push_back(reportTimes("start to hot key taken", hotKey, startGoal));
    rows.push_back(reportTimes("start to icon shown", icon, startGoal));
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (icon[i].empty()) {
            std::printf("    %s shows no icon in the tray.\n", nameOf(all[i]));
        }
    }
    return rows;
}

struct Document {
    std::string text;
    std::string html;
};

Document makeDocument(std::size_t lineCount) {
    std::string text = shortLines(lineCount);
    const text::ConversionPayload payload =
        text::makeSheetDocument(text::LineList(foundation::TextBuffer(text)));
    return {.text = std::move(text), .html = std::string(payload.html.view())};
}

/// Compares our times with those of a program that has the HTML ready.
Json reportFloor(const std::vector<double>& own, const std::vector<double>& bareOwner) {
    if (own.empty() || bareOwner.empty()) {
        throw std::runtime_error("nothing to compare with a bare owner");
    }
    const double ratio = median(own) / median(bareOwner);
    std::printf("    %.2f of a bare owner's %.2f ms, goal %.1f: %s\n",
                ratio,
                median(bareOwner) * 1e3,
                pasteOfBareOwnerGoal,
                verdict(ratio <= pasteOfBareOwnerGoal));
    return {{"what", "key to whole HTML received, of a bare owner's"},
            {"bareOwnerSeconds", median(bareOwner)},
            {"ratio", ratio},
            {"goal", pasteOfBareOwnerGoal},
            {"goalMet", ratio <= pasteOfBareOwnerGoal}};
}

Json measurePaste(const std::vector<Who>& all, Tray tray) {
    auto subjects = makeSubjects(all, tray);
    alternate(subjects, 1, [](DesktopSubject& subject, std::size_t) {
        static_cast<void>(subject.timeStart(std::chrono::milliseconds(0)));
    });
    std::this_thread::sleep_for(quietTime);
    Json rows;
    for (const PasteGoal& goal : pasteGoals) {
        const Document document = makeDocument(goal.lines);
        if (!goal.timesFaster) {
            // The peer does not finish, and keeps the processors busy.
            subjects.resize(1);
        }
        subjects.push_back(std::make_unique<DesktopSubject>(
            std::vector<std::string>{PASTEWISE_BARE_OWNER, std::to_string(goal.lines)}, tray));
        static_cast<void>(subjects.back()->timeStart(std::chrono::milliseconds(0)));
        // Warm-up: the first run has cold code and data.
        alternate(subjects, 1, [&](DesktopSubject& subject, std::size_t) {
            static_cast<void>(subject.timePaste(document.text, document.html));
        });
        Times owner(subjects.size());
        Times wholeHtml(subjects.size());
        alternate(subjects, goal.rounds, [&](DesktopSubject& subject, std::size_t i) {
            const auto times = subject.timePaste(document.text, document.html);
            if (times) {
                owner[i].push_back(times->owner);
                wholeHtml[i].push_back(times->wholeHtml);
            }
        });
        subjects.pop_back();
        const std::vector<double> bareOwner = wholeHtml.back();
        owner.pop_back();
        wholeHtml.pop_back();
        const std::string count = ", " + std::to_string(goal.lines) + " lines";
        rows.push_back(reportTimes("key to new clipboard owner" + count, owner, std::nullopt));
        rows.push_back(
            reportTimes("key to whole HTML received" + count, wholeHtml, goal.timesFaster));
        rows.push_back(reportFloor(wholeHtml.front(), bareOwner));
        for (std::size_t i = 0; i < wholeHtml.size(); ++i) {
            const std::size_t missing = goal.rounds - wholeHtml[i].size();
            if (missing > 0) {
                std::printf("    %s gave nothing in %zu of %zu rounds.\n",
                            nameOf(all[i]),
                            missing,
                            goal.rounds);
            }
            // The median of the successes alone would be misleading.
            if (missing * 4 > goal.rounds) {
                throw std::runtime_error(std::string(nameOf(all[i])) + " converts only sometimes");
            }
        }
    }
    return rows;
}

struct Rest {
    DesktopProcesses::Memory memory;
    /// Our private dirty memory after many more conversions.
    std::optional<std::uint64_t> dirtyLater;
    DesktopProcesses::Activity activity;
};

Rest restOf(const DesktopSubject& subject) {
    std::this_thread::sleep_for(quietTime);
    Rest rest;
    rest.activity = subject.processes().activityDuring(restTime);
    rest.memory = subject.processes().memory();
    if (rest.memory.proportional == 0) {
        throw std::runtime_error("the process is gone, or the system does not report its memory");
    }
    return rest;
}

/// Runs the program alone: pages shared with another would count half.
Rest measureRest(Who who, Tray tray) {
    const auto subject = makeSubject(who, tray);
    const Document document = makeDocument(pasteGoals[0].lines);
    static_cast<void>(subject->timeStart(std::chrono::milliseconds(0)));
    std::this_thread::sleep_for(quietTime);
    if (!subject->timePaste(document.text, document.html) &&
        !subject->timePaste(document.text, document.html)) {
        throw std::runtime_error(std::string(nameOf(who)) + " does not convert");
    }
    Rest rest = restOf(*subject);
    if (who == Who::own) {
        subject->convertAgain(conversionCount);
        std::this_thread::sleep_for(quietTime);
        rest.dirtyLater = subject->processes().memory().dirty;
    }
    return rest;
}

Rest measureBareTray(Tray tray) {
    DesktopSubject subject({PASTEWISE_BARE_TRAY}, tray);
    subject.start();
    return restOf(subject);
}

Json reportRest(const std::string& name, const Rest& rest) {
    std::printf("%-20s %6zu %12.1f MB %9.1f MB %9.1f MB %12llu %14llu %11.2f ms\n",
                name.c_str(),
                rest.memory.processCount,
                static_cast<double>(rest.memory.proportional) / 1e6,
                static_cast<double>(rest.memory.exclusive) / 1e6,
                static_cast<double>(rest.memory.dirty) / 1e6,
                static_cast<unsigned long long>(rest.activity.voluntarySwitches),
                static_cast<unsigned long long>(rest.activity.involuntarySwitches),
                rest.activity.processorSeconds * 1e3);
    if (rest.memory.otherQtProcessCount > 0) {
        std::printf(
            "    other processes that share Qt with it, which makes its proportional memory "
            "smaller: %zu\n",
            rest.memory.otherQtProcessCount);
    }
    std::fflush(stdout);
    return {{"program", name},
            {"processes", rest.memory.processCount},
            {"otherQtProcesses", rest.memory.otherQtProcessCount},
            {"proportionalBytes", rest.memory.proportional},
            {"privateBytes", rest.memory.exclusive},
            {"privateDirtyBytes", rest.memory.dirty},
            {"voluntarySwitches", rest.activity.voluntarySwitches},
            {"involuntarySwitches", rest.activity.involuntarySwitches},
            {"processorSeconds", rest.activity.processorSeconds}};
}

Json reportDirtyGoals(const Rest& own) {
    const std::uint64_t later = own.dirtyLater.value_or(0);
    const std::uint64_t growth = later > own.memory.dirty ? later - own.memory.dirty : 0;
    std::printf(
        "    private dirty memory: %.1f MB, goal %.1f: %s; %.2f MB more after %zu conversions, "
        "goal %.1f: %s\n",
        static_cast<double>(own.memory.dirty) / 1e6,
        static_cast<double>(dirtyGoal) / 1e6,
        verdict(own.memory.dirty <= dirtyGoal),
        static_cast<double>(growth) / 1e6,
        conversionCount,
        static_cast<double>(growthGoal) / 1e6,
        verdict(growth <= growthGoal));
    return {{"what", "private dirty memory"},
            {"bytes", own.memory.dirty},
            {"growthBytes", growth},
            {"goalMet", own.memory.dirty <= dirtyGoal && growth <= growthGoal}};
}

/// The ratio of our memory to the other's, and its limit. Comparable only if no other Qt programs
/// ran at the time.
Json reportMemoryGoal(const Rest& own, const std::string& name, const Rest& other, double goal) {
    const double ratio = static_cast<double>(own.memory.proportional) /
                         static_cast<double>(other.memory.proportional);
    const bool isComparable =
        own.memory.otherQtProcessCount == 0 && other.memory.otherQtProcessCount == 0;
    std::printf("    proportional memory: %.2f of that of %s, goal %.2f: %s\n",
                ratio,
                name.c_str(),
                goal,
                isComparable ? verdict(ratio <= goal) : "not comparable");
    return {{"what", "memory of that of " + name},
            {"ratio", ratio},
            {"goal", goal},
            {"goalMet", isComparable ? Json(ratio <= goal) : Json()}};
}

Json measureAtRest(const std::vector<Who>& all, Tray tray) {
    std::printf("\n%-20s %6s %15s %12s %12s %12s %14s %14s\n",
                "at rest, 30 s",
                "procs",
                "proportional",
                "private",
                "dirty",
                "wake-ups",
                "interruptions",
                "processor");
    Json programs;
    Json goals;
    const Rest own = measureRest(Who::own, tray);
    programs.push_back(reportRest(nameOf(Who::own), own));
    std::optional<Rest> peer;
    if (all.size() > 1) {
        peer = measureRest(Who::peer, tray);
        programs.push_back(reportRest(nameOf(Who::peer), *peer));
    }
    const Rest bareTray = measureBareTray(tray);
    programs.push_back(reportRest("bare Qt tray program", bareTray));

    const bool isStill = own.activity.voluntarySwitches == 0 && own.activity.processorSeconds == 0;
    std::printf("    no wake-up and no processor time: %s\n", verdict(isStill));
    goals.push_back({{"what", "no wake-up and no processor time"}, {"goalMet", isStill}});
    goals.push_back(reportDirtyGoals(own));
    if (peer) {
        goals.push_back(reportMemoryGoal(own, nameOf(Who::peer), *peer, memoryOfPeerGoal));
    }
    goals.push_back(
        reportMemoryGoal(own, "a bare Qt tray program", bareTray, memoryOfBareTrayGoal));
    return {{"programs", programs}, {"goals", goals}};
}

void run(const std::vector<std::string>& arguments) {
    std::string jsonFile;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] != "--json" || i + 1 == arguments.size()) {
            throw std::runtime_error("usage: pastewise_desktop_benchmark [--json FILE]");
        }
        jsonFile = arguments[++i];
    }

    std::vector<Who> all{Who::own};
    if (isInstalled("copyq")) {
        all.push_back(Who::peer);
    } else {
        std::printf("CopyQ is not installed: there is nothing to compare with.\n");
    }
    Tray tray = Tray::panel;
    if (!isInstalled("xfce4-panel")) {
        std::printf("xfce4-panel is not installed: only at the start there is a tray.\n");
        tray = Tray::none;
    }
    std::array<double, 1> load{};
    getloadavg(load.data(), 1);
    std::printf("Medians, in turns; %u processors with %.1f programs at work on them before.\n\n",
                std::thread::hardware_concurrency(),
                load[0]);

    Json report{
        {"loadBefore", load[0]}, {"hasPeer", all.size() > 1}, {"hasPanel", tray == Tray::panel}};
    printRow("", nameOf(Who::own), all.size() > 1 ? nameOf(Who::peer) : "", "times", "goal");
    report["start"] = measureStart(all);
    report["paste"] = measurePaste(all, tray);
    report["rest"] = measureAtRest(all, tray);
    if (!jsonFile.empty()) {
        std::ofstream(jsonFile) << report.dump(2) << "\n";
    }
}

} // namespace

} // namespace benchmarks

int main(int argc, char** argv) {
    try {
        benchmarks::run({argv + 1, argv + argc});
        return 0;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "pastewise_desktop_benchmark: %s\n", error.what()));
        return 1;
    }
}
