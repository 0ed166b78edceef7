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

/// Logged when a credit begins. It is written after this turn of the event loop.
constexpr std::string_view creditingMessage = "Persisting savings on main thread";
/// The credit for two lines.
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

    /// The contents of the other files in the settings' folder.
    [[nodiscard]] std::vector<std::string> otherFiles() const {
        std::vector<std::string> others;
        for (const auto& entry : fs::directory_iterator(settingsPath().parent_path())) {
            if (entry.path() != settingsPath()) {
                std::ifstream file(entry.path(), std::ios::binary);
                others.emplace_back(std::istreambuf_iterator<char>(file),
                                    std::istreambuf_iterator<char>());
            }
        }
        return others;
    }

    /// Starts the program as a user for whom closed files are closed: as root, without the right to
    /// open them.
    void startUnprivileged() {
        program_ =
            startAgain({},
                       geteuid() == 0 ? std::vector<std::string>{"setpriv",
                                                                 "--bounding-set",
                                                                 "-dac_override,-dac_read_search"}
                                      : std::vector<std::string>{});
        ASSERT_TRUE(waitForLog("Application launched successfully")) << program_->standardError();
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

TEST_F(StoreTests, NumbersHaveADecimalPointInEveryLocale) {
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

TEST_F(StoreTests, IsAccessibleToTheUserAlone) {
    startProgram();
    ASSERT_TRUE(waitUntil([this] { return settings().has_value(); }));
    EXPECT_EQ(fs::status(settingsPath()).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

class StoreSignalTests : public StoreTests, public testing::WithParamInterface<int> {};

TEST_P(StoreSignalTests, ACreditJustBeforeTheSignalIsSaved) {
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

TEST_F(StoreTests, AKillLosesAtMostTheConversionThatIsBeingSaved) {
    using Clock = std::chrono::steady_clock;
    constexpr int killCount = 25;
    constexpr int conversionsBefore = 4;
    double before = 0;
    for (int kill = 0; kill < killCount; ++kill) {
        startProgram();
        const auto owner = startOwner({"normal"});
        const auto begin = Clock::now();
        for (int i = 1; i <= conversionsBefore; ++i) {
            convert();
            before += secondsPerConversion;
            ASSERT_TRUE(waitUntil([&] { return storedSeconds() == before; })) << "kill " << kill;
        }
        const auto perConversion = (Clock::now() - begin) / conversionsBefore;
        // From before the key arrives to after all that follows from it.
        pressShortcut();
        std::this_thread::sleep_for(perConversion * 3 / 2 * kill / killCount);
        program_->sendSignal(SIGKILL);
        ASSERT_EQ(program_->waitForExit(), 128 + SIGKILL);

        const double stored = storedSeconds();
        const bool hasBegun = logged(creditingMessage) > conversionsBefore;
        EXPECT_TRUE(stored == before || (hasBegun && stored == before + secondsPerConversion))
            << "kill " << kill << ": " << stored << " after " << before;
        before = stored;
    }
    startProgram();
    EXPECT_EQ(otherFiles(), std::vector<std::string>{});
}

TEST_F(StoreTests, ADamagedFileIsKeptAsideAndTheProgramWorks) {
    const std::string damage = "<plist version=\"1.0\"><dict>";
    writeSettings(damage);
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitUntil([this] { return storedSeconds() == secondsPerConversion; }));
    EXPECT_EQ(logged("not a property list"), 1U) << program_->standardError();
    EXPECT_EQ(otherFiles(), std::vector<std::string>{damage});
    endProgram();
    startProgram();
    EXPECT_EQ(logged("not a property list"), 0U);
}

TEST_F(StoreTests, AFolderThatCannotBeCreatedIsLoggedOnce) {
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
    EXPECT_EQ(logged("The settings cannot be saved"), 1U) << program_->standardError();
}

TEST_F(StoreTests, AReadOnlyFolderKeepsTheOldSettings) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    endProgram();
    ASSERT_EQ(storedSeconds(), secondsPerConversion);
    fs::permissions(settingsPath().parent_path(), fs::perms::owner_read | fs::perms::owner_exec);

    startUnprivileged();
    const auto laterOwner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitForLog("The settings cannot be saved")) << program_->standardError();
    EXPECT_TRUE(waitForLog("Updated time saved display to: 40s"));
    endProgram();
    EXPECT_EQ(storedSeconds(), secondsPerConversion);
    fs::permissions(settingsPath().parent_path(), fs::perms::owner_all);
}

TEST_F(StoreTests, AFileThatMayNotBeReadIsLeftAlone) {
    const std::string settings = "<plist version=\"1.0\"><dict/></plist>";
    writeSettings(settings);
    fs::permissions(settingsPath(), fs::perms::none);
    startUnprivileged();
    const auto owner = startOwner({"normal"});
    convert();
    convert();
    EXPECT_TRUE(waitForLog("Updated time saved display to: 40s"));
    endProgram();
    EXPECT_EQ(logged("no settings will be saved"), 1U) << program_->standardError();
    fs::permissions(settingsPath(), fs::perms::owner_read | fs::perms::owner_write);
    std::ifstream file(settingsPath());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), settings);
    EXPECT_EQ(otherFiles(), std::vector<std::string>{});
}

} // namespace
