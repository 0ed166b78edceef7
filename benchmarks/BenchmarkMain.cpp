// Compares the conversion with the obvious implementations and with merely copying the result:
// pastewise_benchmark [LETTERS] [--json FILE]

#include "Foundation/TextBuffer.h"
#include "Platform/Linux/ProcessSetup.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "benchmarks/Contenders.h"
#include "benchmarks/Inputs.h"
#include "benchmarks/PeakMemory.h"
#include "benchmarks/Timing.h"

#include <malloc.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace benchmarks {

namespace {

using foundation::TextBuffer;
using Json = nlohmann::ordered_json;

constexpr int freshThreshold = 128 * 1024;
constexpr double memoryGoal = 1.2;
constexpr double levelGoal = 0.25;
constexpr double hugePageGoal = 1.5;

/// Time limit for converting one input, in seconds or as a multiple of the copy.
struct Goal {
    double seconds;
    double ofCopy;
    double timesFasterThanReference;
};

const std::map<char, Goal> goals{{'a', {0.4e-6, 0, 20}},
                                 {'b', {3.2e-6, 0, 20}},
                                 {'c', {0, 1.1, 12}},
                                 {'d', {0, 1.1, 12}},
                                 {'e', {0, 1.1, 12}},
                                 {'f', {0, 1.4, 12}},
                                 {'g', {0, 1.4, 12}},
                                 {'h', {0, 1.1, 12}}};

const char* verdict(bool isMet) {
    return isMet ? "met" : "missed";
}

/// Makes malloc map each large block from the system and unmap it when freed, instead of keeping
/// some of them warm.
void makeLargeBlocksFresh() {
    mallopt(M_MMAP_THRESHOLD, freshThreshold);
    mallopt(M_TRIM_THRESHOLD, freshThreshold);
}

void printHeading() {
    std::printf(
        "Memory: before each run all free memory goes back to the system (malloc_trim), and "
        "blocks\n"
        "from %d KB on come fresh from it (M_MMAP_THRESHOLD, M_TRIM_THRESHOLD), page faults\n"
        "included; a and b run on warm malloc.\n"
        "Medians of runs in shuffled order. M: copying the finished html and plain text.\n\n",
        freshThreshold / 1024);
    std::printf("%-33s %10s %9s %7s %-15s %10s %7s %-12s %10s %7s\n",
                "input",
                "conversion",
                "M",
                "of M",
                "goal",
                "ICU",
                "times",
                "goal",
                "PCRE2 JIT",
                "times");
}

std::string duration(double seconds) {
    std::array<char, 32> text{};
    if (seconds < 1e-3) {
        std::snprintf(text.data(), text.size(), "%.2f us", seconds * 1e6);
    } else {
        std::snprintf(text.data(), text.size(), "%.2f ms", seconds * 1e3);
    }
    return text.data();
}

Json measureInput(const Input& input) {
    const bool isSmall = input.text.size() < 100'000;
    const bool isLarge = input.text.size() > 25'000'000;
    const std::size_t repetitions = isSmall ? 20'000 / input.lineCount : 1;
    const std::size_t slowRepetitions = isSmall ? 400 / input.lineCount : 1;
    const Finished finished = finish(input.text);
    const bool agree = allAgree(input.text);

    const auto medians = medianTimes({
        {[&] { return timeOfConversion(input.text, repetitions); }, isLarge ? 15U : 41U},
        {[&] { return timeOfCopy(finished, repetitions); }, isLarge ? 15U : 41U},
        {[&] { return timeOfReference(input.text, slowRepetitions); }, isLarge ? 2U : 5U},
        {[&] { return timeOfPcre2(input.text, slowRepetitions); }, isLarge ? 3U : 9U},
    });
    const double conversion = medians[0];
    const double copy = medians[1];
    const Goal& goal = goals.at(input.letter);
    const double ofCopy = conversion / copy;
    const double timesFaster = medians[2] / conversion;
    const bool isFastEnough = isSmall ? conversion <= goal.seconds : ofCopy <= goal.ofCopy;
    const std::string goalText =
        isSmall ? duration(goal.seconds) : std::to_string(goal.ofCopy).substr(0, 4) + " M";

    std::printf("%c %-31s %10s %9s %7.2f %-8s %-6s %10s %7.1f %2.0f %-9s %10s %7.1f%s\n",
                input.letter,
                std::string(input.description).c_str(),
                duration(conversion).c_str(),
                duration(copy).c_str(),
                ofCopy,
                goalText.c_str(),
                verdict(isFastEnough),
                duration(medians[2]).c_str(),
                timesFaster,
                goal.timesFasterThanReference,
                verdict(timesFaster >= goal.timesFasterThanReference),
                duration(medians[3]).c_str(),
                medians[3] / conversion,
                agree ? "" : "  THE RESULTS DIFFER");
    std::fflush(stdout);
    return {{"input", std::string(1, input.letter)},
            {"description", input.description},
            {"lines", input.lineCount},
            {"inputBytes", input.text.size()},
            {"outputBytes", finished.html.size() + finished.plainText.size()},
            {"conversionSeconds", conversion},
            {"copySeconds", copy},
            {"ofCopy", ofCopy},
            {"timeGoalMet", isFastEnough},
            {"icuSeconds", medians[2]},
            {"timesFasterThanIcu", timesFaster},
            {"timesGoalMet", timesFaster >= goal.timesFasterThanReference},
            {"pcre2Seconds", medians[3]},
            {"resultsAgree", agree}};
}

/// Peak memory of a conversion in addition to its input, as a multiple of its output.
Json measureMemory(const Input& input) {
    const Finished finished = finish(input.text);
    const auto outputSize = static_cast<double>(finished.html.size() + finished.plainText.size());
    TextBuffer text{std::string_view(input.text)};
    const auto peak = peakMemoryOf([&text] {
        const text::LineList lines(std::move(text));
        const text::ConversionPayload payload = text::makeSheetDocument(lines);
    });
    if (!peak) {
        std::printf("%c  the system does not tell\n", input.letter);
        return {{"input", std::string(1, input.letter)}, {"ofOutput", nullptr}};
    }
    const double ofOutput = static_cast<double>(*peak) / outputSize;
    std::printf("%c  %8.1f MB %7.2f of the output, goal %.1f %s\n",
                input.letter,
                static_cast<double>(*peak) / 1e6,
                ofOutput,
                memoryGoal,
                verdict(ofOutput <= memoryGoal));
    return {{"input", std::string(1, input.letter)},
            {"peakBytes", *peak},
            {"ofOutput", ofOutput},
            {"goalMet", ofOutput <= memoryGoal}};
}

/// Checks that the time per line does not depend on the length of the text.
Json measureGrowth() {
    constexpr std::size_t rounds = 5;
    constexpr std::array<std::size_t, 4> counts{64'000, 256'000, 1'000'000, 4'000'000};
    std::vector<double> perLine;

    std::vector<std::string> texts;
    std::vector<Contender> contenders;
    texts.reserve(counts.size());
    for (const std::size_t count : counts) {
        texts.push_back(shortLines(count));
    }
    contenders.reserve(counts.size());
    for (const std::string& text : texts) {
        contenders.push_back({[&text] { return timeOfConversion(text, 1); }, rounds});
    }
    const std::vector<double> times = medianTimes(contenders);
    perLine.reserve(counts.size());
    for (std::size_t i = 0; i < counts.size(); ++i) {
        perLine.push_back(times[i] / static_cast<double>(counts[i]));
    }
    const double middle = median(perLine);
    Json rows = Json::array();
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const double deviation = perLine[i] / middle - 1;
        const bool isLevel = std::abs(deviation) <= levelGoal;
        std::printf("%9zu lines %6.1f ns per line %+5.0f %% of the median, goal 25 %% %s\n",
                    counts[i],
                    perLine[i] * 1e9,
                    deviation * 100,
                    verdict(isLevel));
        rows.push_back(
            {{"lines", counts[i]}, {"nanosecondsPerLine", perLine[i] * 1e9}, {"goalMet", isLevel}});
    }
    return rows;
}

/// The clipboard manager's overhead over the bare conversion while debug messages are off.
Json measureManager() {
    Json rows = Json::array();
    for (const std::size_t count : {std::size_t{100}, std::size_t{10'000}, std::size_t{100'000}}) {
        const std::string text = shortLines(count);
        const auto medians = medianTimes({
            {[&text] { return timeOfManager(text); }, 101},
            {[&text] { return timeOfConversion(text, 1); }, 101},
        });
        const double ratio = medians[0] / medians[1];
        std::printf("%9zu lines %10s through the manager, %10s without, ratio %.2f\n",
                    count,
                    duration(medians[0]).c_str(),
                    duration(medians[1]).c_str(),
                    ratio);
        rows.push_back({{"lines", count},
                        {"managerSeconds", medians[0]},
                        {"bareSeconds", medians[1]},
                        {"ratio", ratio}});
    }
    return rows;
}

/// What asking the system for huge pages saves. Where there are none, the ratio is 1.
Json measureHugePages() {
    const std::string text = shortLines(1'000'000);
    const auto timeWith = [&text](TextBuffer::LargeBlockHook hook) {
        TextBuffer::setLargeBlockHook(hook);
        const double time = timeOfConversion(text, 1);
        TextBuffer::setLargeBlockHook(nullptr);
        return time;
    };
    const auto medians = medianTimes({
        {[&timeWith] { return timeWith(platform::adviseHugePages); }, 15},
        {[&timeWith] { return timeWith(nullptr); }, 15},
    });
    const double timesFaster = medians[1] / medians[0];
    std::printf("%10s with huge pages, %10s without, %.2f times faster, goal %.1f %s\n",
                duration(medians[0]).c_str(),
                duration(medians[1]).c_str(),
                timesFaster,
                hugePageGoal,
                verdict(timesFaster >= hugePageGoal));
    return {{"secondsWith", medians[0]},
            {"secondsWithout", medians[1]},
            {"timesFaster", timesFaster},
            {"goalMet", timesFaster >= hugePageGoal}};
}

void run(const std::vector<std::string>& arguments) {
    std::string letters = "abcdefgh";
    std::string jsonFile;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--json") {
            jsonFile = arguments.at(++i);
        } else {
            letters = arguments[i];
        }
    }
    makeLargeBlocksFresh();
    const std::vector<Input> inputs = makeInputs(letters);
    Json report;

    printHeading();
    for (const Input& input : inputs) {
        report["conversions"].push_back(measureInput(input));
    }
    std::printf("\nMemory at the peak beside the input, with huge pages\n");
    TextBuffer::setLargeBlockHook(platform::adviseHugePages);
    for (const Input& input : inputs) {
        // The system counts in pages, too coarse for smaller inputs.
        if (input.text.size() > 1'000'000) {
            report["memory"].push_back(measureMemory(input));
        }
    }
    TextBuffer::setLargeBlockHook(nullptr);
    std::printf("\n1,000,000 lines in memory that the system may back with huge pages\n");
    report["hugePages"] = measureHugePages();
    std::printf("\nTime per line by length\n");
    report["growth"] = measureGrowth();
    std::printf("\nReading, generating and writing with debug messages off\n");
    report["manager"] = measureManager();

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
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
