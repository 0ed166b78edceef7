#include "tests/Desktop/ResidentTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using program_test::ResidentTest;
using testing_support::ChildProcess;

constexpr std::array<std::string_view, 11> launchSteps{
    "Initializing AnalyticsManager",
    "Initializing AppState with shouldFlashSavings = true",
    "Application launching with condensed status interface",
    "Status bar configured to show icon only with dropdown menu",
    "Initializing ShortcutManager",
    "Loading saved shortcut",
    "No saved shortcut found or invalid data - setting up default shortcut",
    "Shortcut handler registered",
    "Ensuring persistent data is loaded from storage",
    "Refreshing AppState from persistent analytics storage",
    "Application launched successfully"};

class LaunchTests : public ResidentTest {};

TEST_F(LaunchTests, WritesVersionAndHelpWithoutADisplay) {
    for (const auto& [argument, start] :
         {std::pair{"--version", "pastewise "}, {"--help", "Usage: pastewise "}}) {
        ChildProcess program({PASTEWISE_PROGRAM, argument}, {.environment = {{"DISPLAY", ""}}});
        EXPECT_EQ(program.waitForExit(), 0) << program.standardError();
        EXPECT_THAT(program.standardOutput(), testing::StartsWith(start));
    }
}

TEST_F(LaunchTests, RefusesAnUnknownArgumentAndLeavesTheRunningProgramAlone) {
    startProgram();
    ChildProcess second({PASTEWISE_PROGRAM, "--verbose"}, {.environment = session_.environment()});
    EXPECT_EQ(second.waitForExit(), 2);
    EXPECT_THAT(second.standardError(),
                testing::StartsWith("pastewise: unknown argument: --verbose\nUsage: pastewise "));
    EXPECT_EQ(preferencesWindowCount(), 0U);
}

TEST_F(LaunchTests, AcceptsTheArgumentsOfTheToolkit) {
    program_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{PASTEWISE_PROGRAM, "-style", "fusion"},
        ChildProcess::Options{.environment = session_.environment()});
    EXPECT_TRUE(program_->waitForOutput("Checking accessibility permissions..."))
        << program_->standardError();
}

TEST_F(LaunchTests, OutputArrivesThroughAPipeWhileTheProgramRuns) {
    startProgram();
    // The line is printed before the launch ends, so an unbuffered one has arrived by now.
    EXPECT_EQ(program_->standardOutput(), "Checking accessibility permissions...\n");
    EXPECT_TRUE(program_->isRunning());
}

TEST_F(LaunchTests, LogsEachStepInOrder) {
    startProgram();
    std::size_t last = 0;
    for (const std::string_view step : launchSteps) {
        const std::size_t at = program_->standardError().find(step);
        ASSERT_NE(at, std::string::npos) << step << "\n" << program_->standardError();
        EXPECT_GE(at, last) << step << "\n" << program_->standardError();
        last = at;
    }
}

TEST_F(LaunchTests, ConvertsWithoutATray) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitForLog(program_test::creditedMessage));
}

TEST_F(LaunchTests, ConvertsAndEndsSoonWhileTheSessionBusHangs) {
    session_.suspendBus(true);
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    endProgram();
}

TEST_F(LaunchTests, StartsNoSessionBusIfThereIsNone) {
    startProgram({{"DBUS_SESSION_BUS_ADDRESS", ""}});
    const auto owner = startOwner({"normal"});
    convert();
    // dbus-launch stores the address of a bus that it starts for a display there.
    EXPECT_FALSE(std::filesystem::exists(session_.environment().at("HOME") + "/.dbus"));
}

TEST_F(LaunchTests, ConvertsWithoutAnyStandardDescriptor) {
    // Otherwise the first connection would get one of their numbers, and output would go to the X
    // server.
    program_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"sh", "-c", "exec \"$0\" <&- >&- 2>&-", PASTEWISE_PROGRAM},
        ChildProcess::Options{.environment = session_.environment()});
    const auto owner = startOwner({"normal"});
    EXPECT_TRUE(testing_support::waitUntil([this] {
        pressShortcut();
        return runTool({PASTEWISE_CLIPBOARD_READER, "targets"}).find("text/html") !=
               std::string::npos;
    }));
    EXPECT_TRUE(program_->isRunning());
}

} // namespace
