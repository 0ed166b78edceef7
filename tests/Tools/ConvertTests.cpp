#include "tests/Reference/ReferenceConversion.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define PASTEWISE_TEST_UNDER_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define PASTEWISE_TEST_UNDER_ADDRESS_SANITIZER 1
#endif
#endif

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing_support::ChildProcess;

constexpr std::string_view list = "\u2022 Buy milk\r\n\n 2. eggs & \"ham\"\n";
constexpr std::chrono::seconds longPatience{60};

struct Result {
    std::optional<int> exitCode;
    std::string output;
    std::string error;
};

Result resultOf(ChildProcess& process) {
    const auto exitCode = process.waitForExit(longPatience);
    return {
        .exitCode = exitCode, .output = process.standardOutput(), .error = process.standardError()};
}

Result convert(std::vector<std::string> arguments, std::string_view input) {
    arguments.insert(arguments.begin(), PASTEWISE_CONVERT);
    ChildProcess process(
        arguments,
        {.environment = {}, .standardInput = std::string(input), .standardOutputFile = {}});
    return resultOf(process);
}

/// Runs a shell command in which "$0" is the tool.
Result convertInShell(const std::string& command, std::string_view input = {}) {
    ChildProcess process(
        {"/bin/bash", "-c", command, PASTEWISE_CONVERT},
        {.environment = {}, .standardInput = std::string(input), .standardOutputFile = {}});
    return resultOf(process);
}

void expectFailure(const Result& result, std::string_view message) {
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.error, "pastewise-convert: " + std::string(message) + "\n");
}

TEST(ConvertTests, WritesExactlyTheHtmlDocument) {
    const Result result = convert({}, list);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, reference::convert(list).html);
    EXPECT_EQ(result.error, "");
}

TEST(ConvertTests, WritesThePlainTextOnRequest) {
    const Result result = convert({"--plain"}, list);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "Buy milk\neggs & \"ham\"");
}

TEST(ConvertTests, WritesTheCountOnRequest) {
    EXPECT_EQ(convert({"--count"}, list).output, "2\n");
    EXPECT_EQ(convert({"--count"}, "").output, "0\n");
}

TEST(ConvertTests, WritesEverythingAsJsonOnRequest) {
    const std::string input = std::string(list) + std::string("\0\t\u20AC\xFF", 6);
    const Result result = convert({"--json"}, input);
    EXPECT_EQ(result.exitCode, 0);
    const auto expected = reference::convert(reference::repairUtf8(input));
    const auto parsed = nlohmann::json::parse(result.output);
    EXPECT_EQ(parsed.size(), 3U);
    EXPECT_EQ(parsed.at("html").get<std::string>(), expected.html);
    EXPECT_EQ(parsed.at("plainText").get<std::string>(), expected.plainText);
    EXPECT_EQ(parsed.at("stickyCount").get<std::int64_t>(), 3);
}

TEST(ConvertTests, SplitsNoCharacterOfALongTextInJson) {
    std::string input;
    for (int i = 0; i < 400'000; ++i) {
        input += "\u20AC\U0001F600a";
    }
    const auto parsed = nlohmann::json::parse(convert({"--json"}, input).output);
    EXPECT_TRUE(parsed.at("plainText").get<std::string>() == input);
    EXPECT_TRUE(parsed.at("html").get<std::string>() == reference::convert(input).html);
}

TEST(ConvertTests, WritesADocumentWithoutRowsForNoInput) {
    const Result result = convert({}, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, reference::convert("").html);
    EXPECT_EQ(convert({"--plain"}, "").output, "");
}

TEST(ConvertTests, RepairsInvalidUtf8) {
    EXPECT_EQ(convert({"--plain"}, "- a\xE2\x82\n1. \xFF").output, "a\uFFFD\n\uFFFD");
}

TEST(ConvertTests, WritesHelpToStandardOutput) {
    const Result result = convert({"--help"}, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, StartsWith("Usage: pastewise-convert ["));
    for (const char* option : {"--plain", "--count", "--json", "--help", "--version"}) {
        EXPECT_THAT(result.output, HasSubstr(std::string("\n  ") + option + " "));
    }
    EXPECT_EQ(result.error, "");
}

TEST(ConvertTests, WritesTheProjectVersion) {
    const Result result = convert({"--version"}, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "pastewise-convert " PASTEWISE_VERSION "\n");
}

TEST(ConvertTests, WritesTheUsageToStandardErrorForInvalidArguments) {
    const std::vector<std::vector<std::string>> wrong{{"--unknown"},
                                                      {"-p"},
                                                      {""},
                                                      {"file.txt"},
                                                      {"--plain", "--count"},
                                                      {"--plain", "--plain"},
                                                      {"--json", "file.txt"},
                                                      {"--help", "--version"}};
    for (const auto& arguments : wrong) {
        const Result result = convert(arguments, list);
        EXPECT_EQ(result.exitCode, 2) << arguments[0];
        EXPECT_EQ(result.output, "") << arguments[0];
        EXPECT_THAT(result.error, StartsWith("Usage: pastewise-convert [")) << arguments[0];
    }
}

TEST(ConvertTests, FailsWhenTheDiskIsFull) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "This system has no /dev/full";
    }
    for (const std::string mode : {"", "--plain", "--count", "--json", "--help", "--version"}) {
        expectFailure(convertInShell("\"$0\" " + mode + " > /dev/full", list),
                      "cannot write to standard output: No space left on device");
    }
}

TEST(ConvertTests, FailsWhenTheReaderHasClosedThePipe) {
    const testing_support::TemporaryFolder folder;
    const std::string pipe = "'" + (folder.path() / "pipe").string() + "'";
    const Result result = convertInShell("mkfifo " + pipe + "; exec 3<>" + pipe + " 4>" + pipe +
                                         " 3<&-; echo milk | \"$0\" >&4");
    expectFailure(result, "cannot write to standard output: Broken pipe");
}

TEST(ConvertTests, FailsWhenStandardOutputIsClosed) {
    expectFailure(convertInShell("\"$0\" >&-", list),
                  "cannot write to standard output: Bad file descriptor");
}

TEST(ConvertTests, FailsWhenStandardInputIsADirectory) {
    const Result result = convertInShell("\"$0\" < /");
    expectFailure(result, "cannot read standard input: Is a directory");
    EXPECT_EQ(result.output, "");
}

TEST(ConvertTests, FailsWhenStandardInputIsClosed) {
    const Result result = convertInShell("\"$0\" <&-");
    expectFailure(result, "cannot read standard input: Bad file descriptor");
    EXPECT_EQ(result.output, "");
}

TEST(ConvertTests, FailsWhenMemoryRunsOut) {
#ifdef PASTEWISE_TEST_UNDER_ADDRESS_SANITIZER
    GTEST_SKIP() << "AddressSanitizer itself needs more address space than the limit";
#else
    if (convertInShell("ulimit -v 100000").exitCode != 0) {
        GTEST_SKIP() << "This system does not limit the address space of a process";
    }
    const Result result = convertInShell("ulimit -v 100000; head -c 90000000 /dev/zero | \"$0\"");
    expectFailure(result, "out of memory");
    EXPECT_EQ(result.output, "");
#endif
}

TEST(ConvertTests, ConvertsAStreamOfManyMegabytes) {
    const testing_support::TemporaryFolder folder;
    const std::string inputFile = folder.path() / "input.txt";
    const std::string outputFile = folder.path() / "output.txt";
    constexpr std::size_t count = 1'000'000;
    {
        std::ofstream input(inputFile, std::ios::binary);
        for (std::size_t i = 0; i < count; ++i) {
            input << "- line " << i << "\n";
        }
    }
    const Result counted = convertInShell("\"$0\" --count < '" + inputFile + "'");
    EXPECT_EQ(counted.output, "1000000\n");
    EXPECT_EQ(
        convertInShell("cat '" + inputFile + "' | \"$0\" --plain > '" + outputFile + "'").exitCode,
        0);
    std::ifstream output(outputFile, std::ios::binary);
    std::string line;
    std::size_t at = 0;
    while (std::getline(output, line)) {
        ASSERT_EQ(line, "line " + std::to_string(at));
        ++at;
    }
    EXPECT_EQ(at, count);

    // Every row after the first adds the same number of bytes besides its text.
    const std::size_t sizeOfOne = reference::convert("x").html.size();
    const std::size_t sizeOfRow = reference::convert("x\nx").html.size() - sizeOfOne - 1;
    const std::size_t plainTextSize = std::filesystem::file_size(outputFile);
    const std::size_t cells = plainTextSize - (count - 1);
    const std::size_t counts = 3 * (std::to_string(count).size() - 1);
    EXPECT_EQ(convertInShell("\"$0\" < '" + inputFile + "' | wc -c | tr -d ' '").output,
              std::to_string(sizeOfOne - 1 + (count - 1) * sizeOfRow + cells + counts) + "\n");
}

} // namespace
