#include "tests/Desktop/TrayTest.h"
#include "tests/Support/CommaLocale.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

using program_test::creditedMessage;
using program_test::TrayTest;
using testing_support::waitUntil;

namespace fs = std::filesystem;

/// Says that a credit has begun: from here to the next turn of the event loop it is on its way to
/// the disk.
constexpr std::string_view creditingMessage = "Persisting savings on main thread";
/// What an owner with two lines is worth.
constexpr double secondsPerConversion = 20;

class StoreTests : public TrayTest {
  protected:
    [[nodiscard]] double storedSeconds() const {
        const auto stored = settings();
        return stored ? stored->savedSeconds() : -1;
    }

    void writeSettings(const std::string& bytes) const {
        fs::create_directories(settingsPath().parent_path());
        std::ofstream(settingsPath(), std::ios::binary) << bytes;
    }
};

TEST_F(StoreTests, TheTotalSurvivesARestartOnTheSameDay) {
    startProgramInTray();
    const auto owner = startOwner({"normal"});
    convert();
    convert();
    ASSERT_TRUE(waitForLog(creditedMessage, 2));
    endProgram();
    startProgram();
    ASSERT_TRUE(waitForTrayEvents("registered", 2));
    EXPECT_EQ(openMenu().at(0).title, "Time Saved: 40s");
    const auto laterOwner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitForTitle(0, "Time Saved: 1m"));
}

TEST_F(StoreTests, NumbersHaveAPointWhateverTheUsersLanguage) {
    const testing_support::CommaLocale locale;
    writeSettings("<plist version=\"1.0\"><dict><key>analytics.todaySavedSeconds.2000-01-01</key>"
                  "<real>20.5</real></dict></plist>");
    startProgram(locale.environment());
    const auto owner = startOwner({"normal"});
    convert();
    ASSERT_TRUE(waitForLog("Applying confirmed savings: 20.000000 seconds"));
    endProgram();
    EXPECT_EQ(storedSeconds(), 40.5);
}

TEST_F(StoreTests, IsReadableForItsUserAlone) {
    startProgram();
    ASSERT_TRUE(waitUntil([this] { return settings().has_value(); }));
    EXPECT_EQ(fs::status(settingsPath()).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

class StoreSignalTests : public StoreTests, public testing::WithParamInterface<int> {};

TEST_P(StoreSignalTests, WhatWasCreditedJustBeforeTheEndIsOnTheDisk) {
    constexpr int startCount = 5;
    for (int i = 1; i <= startCount; ++i) {
        startProgram();
        const auto owner = startOwner({"normal"});
        pressShortcut();
        ASSERT_TRUE(waitForLog(creditingMessage));
        program_->sendSignal(GetParam());
        EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
        EXPECT_EQ(storedSeconds(), i * secondsPerConversion);
    }
}

INSTANTIATE_TEST_SUITE_P(Each,
                         StoreSignalTests,
                         testing::Values(SIGTERM, SIGINT),
                         [](const auto& signal) {
                             return signal.param == SIGTERM ? "SIGTERM" : "SIGINT";
                         });

TEST_F(StoreTests, AKillAtAnyMomentLosesAtMostTheLastConversion) {
    using Clock = std::chrono::steady_clock;
    constexpr int killCount = 25;
    constexpr int conversionsBefore = 8;
    double before = 0;
    for (int kill = 0; kill < killCount; ++kill) {
        startProgram();
        const auto owner = startOwner({"normal"});
        const auto begin = Clock::now();
        for (int i = 1; i <= conversionsBefore; ++i) {
            pressShortcut();
            ASSERT_TRUE(waitForLog(creditedMessage, static_cast<std::size_t>(i)));
        }
        const auto perConversion = (Clock::now() - begin) / conversionsBefore;
        // From before the key arrives to after all that follows from it.
        pressShortcut();
        std::this_thread::sleep_for(perConversion * 3 / 2 * kill / killCount);
        program_->sendSignal(SIGKILL);
        ASSERT_EQ(program_->waitForExit(), 128 + SIGKILL);

        const auto stored = settings();
        ASSERT_TRUE(stored) << "kill " << kill << " left no property list";
        const double credits = (stored->savedSeconds() - before) / secondsPerConversion;
        EXPECT_GE(credits, static_cast<double>(logged(creditedMessage)) - 1) << "kill " << kill;
        EXPECT_LE(credits, static_cast<double>(logged(creditingMessage))) << "kill " << kill;
        before = stored->savedSeconds();
    }
}

TEST_F(StoreTests, ADamagedFileIsKeptAsideAndTheProgramWorks) {
    const std::string damage = "bplist00 and then nothing of the kind";
    writeSettings(damage);
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitUntil([this] { return storedSeconds() == secondsPerConversion; }));
    EXPECT_EQ(logged("cannot be read"), 1U) << program_->standardError();
    std::vector<std::string> others;
    for (const auto& entry : fs::directory_iterator(settingsPath().parent_path())) {
        if (entry.path() != settingsPath()) {
            std::ifstream file(entry.path(), std::ios::binary);
            others.emplace_back(std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>());
        }
    }
    EXPECT_EQ(others, std::vector<std::string>{damage});
    endProgram();
    startProgram();
    EXPECT_EQ(logged("cannot be read"), 0U);
}

TEST_F(StoreTests, WhereTheFolderCannotBeMadeTheProgramWorksAndSaysSo) {
    fs::create_directories(settingsPath().parent_path().parent_path());
    std::ofstream(settingsPath().parent_path()) << "a file where the folder should be";
    startProgramInTray();
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitForTitle(0, "Time Saved: 20s"));
    EXPECT_TRUE(waitForLog("The settings cannot be saved"));
    convert();
    EXPECT_TRUE(waitForTitle(0, "Time Saved: 40s"));
    endProgram();
}

TEST_F(StoreTests, WhereTheFolderMayNotBeWrittenTheOldSettingsStayAndTheProgramWorks) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    endProgram();
    ASSERT_EQ(storedSeconds(), secondsPerConversion);
    fs::permissions(settingsPath().parent_path(), fs::perms::owner_read | fs::perms::owner_exec);

    // The superuser may write everywhere, unless that right is taken away.
    program_ = startAgain(
        {},
        geteuid() == 0 ? std::vector<std::string>{"setpriv", "--bounding-set", "-dac_override"}
                       : std::vector<std::string>{});
    ASSERT_TRUE(waitForLog("Application launched successfully")) << program_->standardError();
    const auto laterOwner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitForLog("The settings cannot be saved")) << program_->standardError();
    EXPECT_TRUE(waitForLog("Updated time saved display to: 40s"));
    endProgram();
    EXPECT_EQ(storedSeconds(), secondsPerConversion);
    fs::permissions(settingsPath().parent_path(), fs::perms::owner_all);
}

} // namespace
