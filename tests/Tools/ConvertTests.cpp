#include "tests/Reference/ReferenceConversion.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitUntil.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
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
using testing::Not;
using testing::StartsWith;
using testing_support::ChildProcess;
using namespace std::string_view_literals;

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
    for (const char* option : {"-p, --plain ",
                               "-c, --count ",
                               "-j, --json ",
                               "-0, --null ",
                               "-o, --output=FILE ",
                               "-h, --help ",
                               "-V, --version "}) {
        EXPECT_THAT(result.output, HasSubstr(std::string("\n  ") + option));
    }
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(convert({"-h"}, "").output, result.output);
}

TEST(ConvertTests, WritesHelpThatFitsATerminal) {
    std::istringstream help(convert({"--help"}, "").output);
    int count = 0;
    for (std::string line; std::getline(help, line); ++count) {
        EXPECT_LE(line.size(), 80U) << line;
    }
    EXPECT_LE(count, 24);
}

TEST(ConvertTests, WritesTheProjectVersion) {
    const Result result = convert({"--version"}, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "pastewise-convert " PASTEWISE_VERSION "\n");
    EXPECT_EQ(convert({"-V"}, "").output, result.output);
}

TEST(ConvertTests, TakesShortOptions) {
    EXPECT_EQ(convert({"-p"}, list).output, convert({"--plain"}, list).output);
    EXPECT_EQ(convert({"-c"}, list).output, "2\n");
    EXPECT_EQ(convert({"-j"}, list).output, convert({"--json"}, list).output);
    EXPECT_EQ(convert({"-0c"}, "a\0b"sv).output, "2\n");
}

TEST(ConvertTests, WritesTheUsageToStandardErrorForInvalidArguments) {
    const std::vector<std::vector<std::string>> wrong{{"--unknown"},
                                                      {"-x"},
                                                      {"--plain=yes"},
                                                      {"--output"},
                                                      {"-o"},
                                                      {"--plain", "--count"},
                                                      {"--plain", "--plain"},
                                                      {"file.txt", "-cj"}};
    for (const auto& arguments : wrong) {
        const Result result = convert(arguments, list);
        EXPECT_EQ(result.exitCode, 2) << arguments[0];
        EXPECT_EQ(result.output, "") << arguments[0];
        EXPECT_THAT(result.error, HasSubstr("Usage: pastewise-convert [")) << arguments[0];
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
    expectFailure(result, "out of memory: a line, or with --json the list, is too long");
    EXPECT_EQ(result.output, "");
#endif
}

TEST(ConvertTests, ConvertsAnyNumberOfLinesInLittleMemory) {
#ifdef PASTEWISE_TEST_UNDER_ADDRESS_SANITIZER
    GTEST_SKIP() << "AddressSanitizer itself needs more address space than the limit";
#else
    for (const std::string mode : {"", "--plain", "--count"}) {
        const Result result = convertInShell("ulimit -v 40000; yes a | head -n 4000000 | \"$0\" " +
                                             mode + " | tail -c 8");
        EXPECT_EQ(result.error, "") << mode;
    }
#endif
}

TEST(ConvertTests, FailsForALineOfMoreThanAGibibyte) {
    const Result result =
        convertInShell("{ echo milk; head -c 1100000000 /dev/zero; } | \"$0\" --plain");
    expectFailure(result, "a line is longer than 1 GiB");
    EXPECT_EQ(result.output, "milk");
}

TEST(ConvertTests, WritesTheFirstRowsBeforeTheInputEnds) {
    ChildProcess process({PASTEWISE_CONVERT}, {.keepsInputOpen = true});
    process.write("- Buy milk\n- eg");
    EXPECT_TRUE(process.waitForOutput(">Buy milk"));
    EXPECT_TRUE(process.isRunning());
    EXPECT_THAT(process.standardOutput(), Not(HasSubstr("eg")));
}

class ConvertFilesTests : public testing::Test {
  protected:
    std::string fileWith(const std::string& name, std::string_view content) {
        const std::string path = pathOf(name);
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    [[nodiscard]] std::string pathOf(const std::string& name) const {
        return folder_.path() / name;
    }

    [[nodiscard]] std::vector<std::string> namesInFolder() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    static std::string contentOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::filesystem::perms permissionsOf(const std::string& path) {
        return std::filesystem::status(path).permissions();
    }

  private:
    testing_support::TemporaryFolder folder_;
};

TEST_F(ConvertFilesTests, ReadsFilesAndStandardInputInOrder) {
    const std::string first = fileWith("a.txt", "- a");
    const std::string second = fileWith("b.txt", "b1\nb2\n");
    EXPECT_EQ(convert({"--plain", first, "-", second}, "1. c").output, "a\nc\nb1\nb2");
    EXPECT_EQ(convert({first, "--count", second}, "unread").output, "3\n");
    EXPECT_EQ(convert({"-p", "--", first}, "").output, "a");
}

TEST_F(ConvertFilesTests, FailsForAFileThatIsNotThere) {
    const Result result = convert({"--plain", fileWith("a.txt", "a"), pathOf("b.txt")}, "");
    expectFailure(result, "cannot read " + pathOf("b.txt") + ": No such file or directory");
}

TEST_F(ConvertFilesTests, FailsWhenReadingFailsInTheMiddle) {
    // The controlling end of a terminal whose other end is closed fails to read with EIO.
    const int controller = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(controller >= 0 && grantpt(controller) == 0 && unlockpt(controller) == 0);
    const int terminal = open(ptsname(controller), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(terminal, 0);
    constexpr std::string_view text = "- milk\n- eggs\n- bre";
    ASSERT_EQ(write(terminal, text.data(), text.size()), static_cast<ssize_t>(text.size()));

    const std::string output = fileWith("out.txt", "before");
    ChildProcess process({"/bin/bash",
                          "-c",
                          "exec \"$0\" --plain <&" + std::to_string(controller),
                          PASTEWISE_CONVERT});
    EXPECT_TRUE(process.waitForOutput("eggs"));
    close(terminal);
    close(controller);
    const Result result = resultOf(process);
    expectFailure(result, "cannot read standard input: Input/output error");
    EXPECT_EQ(result.output, "milk\neggs");
}

TEST_F(ConvertFilesTests, SeparatesItemsByNulOnRequest) {
    constexpr std::string_view items = "- a\nb\0\r\n2. c\0\0d"sv;
    EXPECT_EQ(convert({"--null", "--plain"}, items).output, "a b\nc\nd");
    EXPECT_EQ(convert({"-0"}, items).output, reference::convert("a b\nc\nd").html);
}

TEST_F(ConvertFilesTests, WritesToAFile) {
    const Result result = convert({"-o", pathOf("sheet.html")}, list);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output + result.error, "");
    EXPECT_EQ(contentOf(pathOf("sheet.html")), reference::convert(list).html);
    EXPECT_EQ(namesInFolder(), std::vector<std::string>{"sheet.html"});
    EXPECT_EQ(permissionsOf(pathOf("sheet.html")), permissionsOf(fileWith("new", "")));
    EXPECT_EQ(convert({"--plain", "--output=-"}, list).output, convert({"--plain"}, list).output);
}

TEST_F(ConvertFilesTests, ReplacesItsOwnInput) {
    const std::string file = fileWith("list.txt", list);
    EXPECT_EQ(convert({"--plain", file, "--output", file}, "").exitCode, 0);
    EXPECT_EQ(contentOf(file), "Buy milk\neggs & \"ham\"");
}

TEST_F(ConvertFilesTests, ReplacesAFileOnlyWhenTheOutputIsComplete) {
    const std::string file = fileWith("out.txt", "before");
    std::filesystem::permissions(file, std::filesystem::perms(0640));
    ChildProcess process({PASTEWISE_CONVERT, "--plain", "-o", file}, {.keepsInputOpen = true});
    process.write("a\n");
    ASSERT_TRUE(testing_support::waitUntil([this] { return namesInFolder().size() == 2; }));
    EXPECT_EQ(contentOf(file), "before");
    process.closeInput();
    EXPECT_EQ(process.waitForExit(), 0);
    EXPECT_EQ(contentOf(file), "a");
    EXPECT_EQ(permissionsOf(file), std::filesystem::perms(0640));
    EXPECT_EQ(namesInFolder().size(), 1U);
}

TEST_F(ConvertFilesTests, LeavesTheFileAloneWhenItFails) {
    const std::string file = fileWith("out.txt", "before");
    expectFailure(convert({"-o", file, "/"}, ""), "cannot read /: Is a directory");
    EXPECT_EQ(contentOf(file), "before");
    EXPECT_EQ(namesInFolder().size(), 1U);
}

TEST_F(ConvertFilesTests, LeavesTheFileAloneWhenInterrupted) {
    const std::string file = fileWith("out.txt", "before");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        ChildProcess process({PASTEWISE_CONVERT, "-o", file}, {.keepsInputOpen = true});
        ASSERT_TRUE(testing_support::waitUntil([this] { return namesInFolder().size() == 2; }));
        process.write("a\n");
        process.sendSignal(signal);
        EXPECT_EQ(process.waitForExit(), 128 + signal);
        EXPECT_EQ(contentOf(file), "before");
        EXPECT_EQ(namesInFolder().size(), 1U);
    }
}

TEST_F(ConvertFilesTests, LeavesAWriteProtectedFileAlone) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "File permissions do not bind the superuser";
    }
    const std::string file = fileWith("out.txt", "before");
    std::filesystem::permissions(file, std::filesystem::perms(0440));
    expectFailure(convert({"-o", file}, list), "cannot write to " + file + ": Permission denied");
    EXPECT_EQ(contentOf(file), "before");
}

TEST_F(ConvertFilesTests, WritesThroughALink) {
    const std::string file = fileWith("out.txt", "before");
    std::filesystem::create_symlink("out.txt", pathOf("link"));
    EXPECT_EQ(convert({"--plain", "-o", pathOf("link")}, "a").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(pathOf("link")));
    EXPECT_EQ(contentOf(file), "a");
}

TEST_F(ConvertFilesTests, WritesToADeviceDirectly) {
    EXPECT_EQ(convert({"-o", "/dev/null"}, list).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(ConvertFilesTests, FailsForAFileThatCannotBeCreated) {
    const std::string file = pathOf("missing/out.txt");
    expectFailure(convert({"-o", file}, list),
                  "cannot write to " + file + ": No such file or directory");
    expectFailure(convert({"-o", pathOf("")}, list),
                  "cannot write to " + pathOf("") + ": Is a directory");
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
