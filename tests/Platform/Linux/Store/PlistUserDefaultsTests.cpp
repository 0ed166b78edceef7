#include "Foundation/Logger.h"
#include "Platform/Linux/Store/PlistUserDefaults.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Support/DeferringWorker.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/InlineWorker.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/UnprivilegedUser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using platform::PlistUserDefaults;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::EnvironmentVariable;
using Object = foundation::Value;

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class PlistUserDefaultsTests : public testing::Test {
  protected:
    PlistUserDefaultsTests() { defaults_ = open(); }

    std::unique_ptr<PlistUserDefaults> open() {
        return std::make_unique<PlistUserDefaults>(path_, queue_, worker_, loggers_);
    }

    /// Another start of the program. The one before has ended.
    void restart() {
        defaults_.reset();
        defaults_ = open();
    }

    /// A start that finds these bytes in the file's place.
    void restartWith(const std::string& bytes) {
        defaults_.reset();
        fs::create_directories(folder_);
        std::ofstream(path_, std::ios::binary) << bytes;
        defaults_ = open();
    }

    /// Whether a new file has taken the place of the old one since the last call.
    bool wasWritten() {
        struct stat status {};

        const bool isThere = stat(path_.c_str(), &status) == 0;
        const auto now =
            isThere ? std::pair(status.st_ino, status.st_mtim.tv_nsec) : std::pair<ino_t, long>();
        return std::exchange(seen_, now) != now;
    }

    /// Everything in the settings' folder but the settings.
    std::vector<fs::path> otherFiles() {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            if (entry.path() != path_) {
                files.push_back(entry.path());
            }
        }
        return files;
    }

    testing_support::TemporaryFolder temporary_;
    fs::path folder_ = temporary_.path() / "pastewise";
    fs::path path_ = folder_ / "com.app.pastewise.plist";
    platform::MemoryMainQueue queue_;
    platform::MemoryLogSink log_;
    foundation::LoggerFactory loggers_{log_, "com.app.pastewise"};
    testing_support::InlineWorker worker_;
    std::unique_ptr<PlistUserDefaults> defaults_;
    std::pair<ino_t, long> seen_{};
};

TEST_F(PlistUserDefaultsTests, BeginEmptyAndSilentWithoutAFile) {
    EXPECT_EQ(defaults_->object("any"), std::nullopt);
    queue_.drain();
    EXPECT_FALSE(fs::exists(folder_));
    EXPECT_THAT(log_.messages(), IsEmpty());
}

TEST_F(PlistUserDefaultsTests, AreOnTheDiskAfterTheTurnThatChangedThem) {
    defaults_->setObject("key", 0.1);
    EXPECT_FALSE(fs::exists(path_));
    queue_.drain();
    EXPECT_TRUE(contentsOf(path_).starts_with("bplist00"));
    EXPECT_EQ(open()->object("key"), Object(0.1));
}

TEST_F(PlistUserDefaultsTests, AreWrittenOnceForAllChangesOfATurn) {
    defaults_->setObject("a", true);
    defaults_->setObject("b", 1.0);
    defaults_->removeObject("a");
    EXPECT_EQ(queue_.pendingCount(), 1U);
    queue_.drain();
    EXPECT_TRUE(wasWritten());
    defaults_->setObject("b", 2.0);
    EXPECT_EQ(queue_.pendingCount(), 1U);
    queue_.drain();
    EXPECT_TRUE(wasWritten());
}

TEST_F(PlistUserDefaultsTests, AreNotWrittenForAValueThatIsThereAlready) {
    defaults_->setObject("a", true);
    queue_.drain();
    EXPECT_TRUE(wasWritten());
    defaults_->setObject("a", true);
    defaults_->removeObject("b");
    EXPECT_EQ(queue_.pendingCount(), 0U);
    restart();
    defaults_->setObject("a", true);
    EXPECT_EQ(queue_.pendingCount(), 0U);
    defaults_->flush();
    EXPECT_FALSE(wasWritten());
}

TEST_F(PlistUserDefaultsTests, AreWrittenAtOnceWhereTheProgramEnds) {
    defaults_->setObject("a", 1.0);
    defaults_->flush();
    EXPECT_EQ(open()->object("a"), Object(1.0));
    EXPECT_TRUE(wasWritten());
    queue_.drain();
    EXPECT_FALSE(wasWritten());
}

TEST_F(PlistUserDefaultsTests, AreWrittenWhenTheObjectGoes) {
    defaults_->setObject("a", 1.0);
    defaults_.reset();
    EXPECT_EQ(open()->object("a"), Object(1.0));
    queue_.drain();
}

TEST_F(PlistUserDefaultsTests, KeepWhatAnotherVersionStored) {
    restartWith("<plist version=\"1.0\"><dict>"
                "<key>list</key><array><integer>1</integer></array>"
                "<key>a</key><real>350</real></dict></plist>");
    EXPECT_EQ(defaults_->object("a"), Object(350.0));
    EXPECT_FALSE(contentsOf(path_).starts_with("bplist"));
    defaults_->setObject("a", 360.0);
    restart();
    EXPECT_TRUE(contentsOf(path_).starts_with("bplist"));
    EXPECT_EQ(defaults_->object("a"), Object(360.0));
    EXPECT_EQ(defaults_->object("list"), Object(foundation::Other{}));
    EXPECT_THAT(log_.messages(), IsEmpty());
    EXPECT_THAT(otherFiles(), IsEmpty());
}

TEST_F(PlistUserDefaultsTests, KeepADamagedFileAsideAndBeginEmpty) {
    restartWith("secret");
    EXPECT_EQ(defaults_->object("any"), std::nullopt);
    EXPECT_FALSE(fs::exists(path_));
    const auto kept = otherFiles();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(contentsOf(kept[0]), "secret");
    EXPECT_THAT(kept[0].filename().string(),
                testing::MatchesRegex("com\\.app\\.pastewise\\.plist\\.damaged-"
                                      "[0-9]{8}T[0-9]{6}"));
    EXPECT_THAT(log_.messages(),
                ElementsAre("error: The settings in " + path_.string() +
                            " cannot be read (not a property list of settings): kept as " +
                            kept[0].string()));
    EXPECT_EQ(log_.entries()[0].redacted, log_.entries()[0].whole);
    EXPECT_EQ(log_.entries()[0].category, "PlistUserDefaults");

    defaults_->setObject("a", true);
    restart();
    EXPECT_EQ(defaults_->object("a"), Object(true));
    EXPECT_EQ(contentsOf(kept[0]), "secret");
}

TEST_F(PlistUserDefaultsTests, KeepEveryDamagedFileAside) {
    restartWith("first");
    restartWith("second");
    restartWith("<plist version=\"1.0\"><array/></plist>");
    EXPECT_EQ(otherFiles().size(), 3U);
    EXPECT_EQ(log_.messages().size(), 3U);
}

TEST_F(PlistUserDefaultsTests, TakeAnEmptyFileForADamagedOne) {
    restartWith("");
    EXPECT_EQ(otherFiles().size(), 1U);
    EXPECT_EQ(log_.messages().size(), 1U);
}

TEST_F(PlistUserDefaultsTests, KeepAHugeFileAside) {
    restartWith("");
    log_.clear();
    defaults_.reset();
    std::ofstream(path_) << "bplist00";
    fs::resize_file(path_, std::uintmax_t{1} << 40U);
    defaults_ = open();
    EXPECT_THAT(log_.messages(), ElementsAre(HasSubstr("too large")));
    EXPECT_FALSE(fs::exists(path_));
}

TEST_F(PlistUserDefaultsTests, KeepAFolderInTheFilesPlaceAside) {
    defaults_.reset();
    fs::create_directories(path_ / "inner");
    defaults_ = open();
    EXPECT_EQ(log_.messages().size(), 1U);
    defaults_->setObject("a", true);
    restart();
    EXPECT_EQ(defaults_->object("a"), Object(true));
    ASSERT_EQ(otherFiles().size(), 1U);
    EXPECT_TRUE(fs::exists(otherFiles()[0] / "inner"));
}

TEST_F(PlistUserDefaultsTests, NeverOverwriteADamagedFileThatCannotBeMoved) {
    restartWith("unused");
    defaults_.reset();
    fs::remove(otherFiles().at(0));
    std::ofstream(path_) << "damaged";
    fs::permissions(path_, fs::perms(0644));
    fs::permissions(temporary_.path(), fs::perms(0755));
    fs::permissions(folder_, fs::perms(0555));
    log_.clear();
    EXPECT_EXIT(
        {
            const bool isOrdinary = testing_support::becomeUnprivileged();
            defaults_ = open();
            defaults_->setObject("a", true);
            queue_.drain();
            const bool isThere = defaults_->object("a") == Object(true);
            defaults_.reset();
            const bool saidOnce =
                log_.messages().size() == 1 &&
                log_.messages()[0].find("no settings will be saved") != std::string::npos;
            std::exit(isOrdinary && isThere && saidOnce ? 0 : 1);
        },
        testing::ExitedWithCode(0),
        "");
    // A folder that may be written to does not change the decision while the program runs.
    EXPECT_EQ(contentsOf(path_), "damaged");
    fs::permissions(folder_, fs::perms(0755));
    EXPECT_THAT(otherFiles(), IsEmpty());
}

TEST_F(PlistUserDefaultsTests, SayOnceForEachAttemptThatTheyCannotBeSavedAndTryAgain) {
    std::ofstream(folder_) << "in the folder's place";
    defaults_->setObject("a", std::string("secret"));
    queue_.drain();
    EXPECT_THAT(log_.messages(),
                ElementsAre(AllOf(
                    HasSubstr("error: The settings cannot be saved in " + path_.string() + ": "),
                    testing::Not(HasSubstr("secret")))));
    queue_.drain();
    EXPECT_EQ(log_.messages().size(), 1U);

    defaults_->setObject("b", 2.0);
    queue_.drain();
    EXPECT_EQ(log_.messages().size(), 2U);
    EXPECT_EQ(defaults_->object("a"), Object(std::string("secret")));

    fs::remove(folder_);
    defaults_->setObject("b", 3.0);
    queue_.drain();
    EXPECT_EQ(log_.messages().size(), 2U);
    EXPECT_EQ(open()->object("a"), Object(std::string("secret")));
    EXPECT_EQ(open()->object("b"), Object(3.0));
}

TEST_F(PlistUserDefaultsTests, TryAgainAtTheEndOfTheProgram) {
    std::ofstream(folder_) << "in the folder's place";
    defaults_->setObject("a", 1.0);
    queue_.drain();
    fs::remove(folder_);
    restart();
    EXPECT_EQ(defaults_->object("a"), Object(1.0));
}

TEST_F(PlistUserDefaultsTests, SayThatTheyAreTooManyToBeSaved) {
    defaults_->setObject("a", std::string(std::size_t{5} << 20U, 'x'));
    queue_.drain();
    EXPECT_THAT(log_.messages(), ElementsAre(HasSubstr("there are too many")));
    EXPECT_FALSE(fs::exists(path_));
    defaults_->removeObject("a");
    defaults_->setObject("b", true);
    restart();
    EXPECT_EQ(defaults_->object("b"), Object(true));
}

TEST(PlistUserDefaultsPathTests, IsInTheConfigurationFolder) {
    const EnvironmentVariable home("HOME", "/home/user");
    const EnvironmentVariable config("XDG_CONFIG_HOME", "/somewhere/else");
    EXPECT_EQ(PlistUserDefaults::defaultPath(),
              "/somewhere/else/pastewise/com.app.pastewise.plist");
}

TEST(PlistUserDefaultsPathTests, IsInTheHomeFolderWhereThatIsUnsetOrNotAbsolute) {
    const EnvironmentVariable home("HOME", "/home/user");
    for (const char* value : std::vector<const char*>{nullptr, "", "relative/folder"}) {
        const EnvironmentVariable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(PlistUserDefaults::defaultPath(),
                  "/home/user/.config/pastewise/com.app.pastewise.plist");
    }
}

TEST(PlistUserDefaultsPathTests, IsInTheHomeFolderOfTheUserDatabaseWithoutAnyOther) {
    const EnvironmentVariable config("XDG_CONFIG_HOME", nullptr);
    const EnvironmentVariable home("HOME", nullptr);
    const fs::path path = PlistUserDefaults::defaultPath();
    EXPECT_TRUE(path.is_absolute()) << path;
    EXPECT_TRUE(path.string().ends_with("/.config/pastewise/com.app.pastewise.plist")) << path;
}

TEST_F(PlistUserDefaultsTests, KeepsTheEventLoopFreeWhileTheDiskWrites) {
    testing_support::DeferringWorker worker;
    PlistUserDefaults defaults(path_, queue_, worker, loggers_);
    defaults.setObject("a", 1.0);
    queue_.drain();
    EXPECT_EQ(worker.waitingCount(), 1U);
    EXPECT_FALSE(fs::exists(path_));
    EXPECT_EQ(defaults.doubleForKey("a"), 1);
}

TEST_F(PlistUserDefaultsTests, ChangesNothingFurtherBeforeTheLastTurnIsOnTheDisk) {
    testing_support::DeferringWorker worker;
    PlistUserDefaults defaults(path_, queue_, worker, loggers_);
    defaults.setObject("a", 1.0);
    queue_.drain();
    defaults.setObject("a", 2.0);
    EXPECT_EQ(worker.waitingCount(), 0U);
    EXPECT_EQ(open()->doubleForKey("a"), 1);
    defaults.flush();
    EXPECT_EQ(worker.waitingCount(), 0U);
    EXPECT_EQ(open()->doubleForKey("a"), 2);
}

} // namespace
