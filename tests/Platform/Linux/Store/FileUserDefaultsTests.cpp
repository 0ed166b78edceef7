#include "Foundation/Logger.h"
#include "Platform/Linux/Store/FileUserDefaults.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/UnprivilegedUser.h"
#include "tests/Support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::system_clock;
using foundation::Value;
using platform::FileUserDefaults;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing_support::EnvironmentVariable;

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const std::string& contents) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

class FileUserDefaultsTests : public testing::Test {
  protected:
    /// Starts the program again, after the end of the run before.
    void start() {
        defaults_.reset();
        defaults_ = std::make_unique<FileUserDefaults>(
            QString::fromStdString(path_), queue_, disk_, loggers_);
    }

    void startWith(const std::string& contents) {
        defaults_.reset();
        writeFile(path_, contents);
        start();
    }

    /// Ends a turn of the event loop and waits for the disk.
    void endTurn() {
        queue_.drain();
        disk_.waitForDone();
    }

    /// What a later run would read.
    std::optional<Value> stored(const std::string& key) {
        return FileUserDefaults(QString::fromStdString(path_), queue_, disk_, loggers_).object(key);
    }

    /// The names in the settings' folder, or in another one.
    static std::vector<std::string> namesIn(const fs::path& folder) {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    /// Runs `body` in a child process and expects it to return true.
    static void expectInChild(const std::function<bool()>& body) {
        EXPECT_EXIT(std::exit(body() ? 0 : 1), testing::ExitedWithCode(0), "");
    }

    /// Tries in every way to have the settings written.
    void changeAndEnd() {
        defaults_->setObject("a", true);
        endTurn();
        defaults_->setObject("a", false);
        defaults_.reset();
    }

    const testing_support::TemporaryFolder temporary_;
    const fs::path folder_ = temporary_.path() / "config" / "pastewise";
    const fs::path path_ = folder_ / "settings";
    platform::MemoryMainQueue queue_;
    platform::MemoryLogSink log_;
    const foundation::LoggerFactory loggers_{log_, "com.app.pastewise"};
    QThreadPool disk_;
    std::unique_ptr<FileUserDefaults> defaults_;
};

TEST_F(FileUserDefaultsTests, StartEmptyAndSilentWithoutAFile) {
    start();
    EXPECT_EQ(defaults_->object("any"), std::nullopt);
    defaults_->removeObject("any");
    defaults_.reset();
    EXPECT_THAT(namesIn(temporary_.path()), IsEmpty());
    EXPECT_THAT(log_.messages(), IsEmpty());
}

TEST_F(FileUserDefaultsTests, AreWrittenOnceAfterTheTurnThatChangedThem) {
    start();
    defaults_->setObject("a", 0.1);
    defaults_->setObject("b", 1.0);
    defaults_->removeObject("b");
    EXPECT_EQ(queue_.pendingCount(), 1U);
    EXPECT_FALSE(fs::exists(path_));
    endTurn();
    EXPECT_EQ(stored("a"), Value(0.1));
    EXPECT_EQ(stored("b"), std::nullopt);
    EXPECT_THAT(namesIn(folder_), ElementsAre("settings"));
}

TEST_F(FileUserDefaultsTests, AreWrittenByFlushAndAtTheEnd) {
    start();
    defaults_->setObject("a", 1.0);
    defaults_->flush();
    EXPECT_EQ(stored("a"), Value(1.0));
    defaults_->setObject("a", 2.0);
    defaults_.reset();
    EXPECT_EQ(stored("a"), Value(2.0));
    queue_.drain();
}

TEST_F(FileUserDefaultsTests, AreNotWrittenWithoutAChange) {
    start();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    defaults_->setObject("a", nan);
    endTurn();
    start();
    defaults_->setObject("a", nan);
    defaults_->setObject("b\xFF", true);
    defaults_->setObject("b", std::string("\xFF"));
    defaults_->removeObject("b");
    EXPECT_EQ(queue_.pendingCount(), 0U);
    defaults_->setObject("a", -0.0);
    endTurn();
    defaults_->setObject("a", 0.0);
    EXPECT_EQ(queue_.pendingCount(), 1U);
}

TEST_F(FileUserDefaultsTests, KeepEntriesThatTheProgramDoesNotUse) {
    startWith("<plist version=\"1.0\"><dict>"
              "<key>list</key><array><data>AAEC</data></array>"
              "<key>a</key><real>350</real></dict></plist>");
    EXPECT_EQ(defaults_->object("a"), Value(350.0));
    EXPECT_EQ(defaults_->object("list"), Value(foundation::Other{}));
    defaults_->setObject("a", 360.0);
    defaults_->setObject("list", foundation::Other{});
    start();
    EXPECT_EQ(defaults_->object("a"), Value(360.0));
    EXPECT_THAT(contentsOf(path_), HasSubstr("<key>list</key><array><data>AAEC</data></array>\n"));
    EXPECT_THAT(log_.messages(), IsEmpty());
}

TEST_F(FileUserDefaultsTests, AreAccessibleToTheUserAlone) {
    const mode_t previous = umask(0);
    start();
    for (const double number : {1.0, 2.0}) {
        defaults_->setObject("a", number);
        defaults_->flush();
        EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0600));
        fs::permissions(path_, fs::perms(0666));
    }
    umask(previous);
    EXPECT_EQ(fs::status(folder_).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(folder_.parent_path()).permissions(), fs::perms(0700));
}

TEST_F(FileUserDefaultsTests, ReplaceTheFileBehindASymbolicLink) {
    const fs::path dotfiles = temporary_.path() / "dotfiles";
    fs::create_directories(folder_);
    fs::create_directories(dotfiles);
    fs::create_symlink("../../dotfiles/second", path_);
    fs::create_symlink("new/kept", dotfiles / "second");
    for (const double number : {1.0, 2.0}) {
        start();
        defaults_->setObject("a", number);
        defaults_.reset();
        EXPECT_EQ(stored("a"), Value(number));
        EXPECT_TRUE(fs::is_symlink(path_));
        EXPECT_TRUE(fs::is_symlink(dotfiles / "second"));
        EXPECT_THAT(namesIn(dotfiles / "new"), ElementsAre("kept"));
    }
}

TEST_F(FileUserDefaultsTests, KeepAFileAsideThatIsNoPropertyList) {
    const std::string damage = "bplist00 secret";
    startWith(damage);
    EXPECT_EQ(defaults_->object("any"), std::nullopt);
    const auto names = namesIn(folder_);
    ASSERT_EQ(names.size(), 1U);
    EXPECT_THAT(names[0], MatchesRegex("settings\\.damaged-[0-9]{8}T[0-9]{9}"));
    EXPECT_EQ(contentsOf(folder_ / names[0]), damage);
    EXPECT_THAT(log_.messages(),
                ElementsAre("error: The settings in " + path_.string() +
                            " are not a property list: kept as " + (folder_ / names[0]).string()));
    EXPECT_EQ(log_.entries()[0].redacted, log_.entries()[0].whole);
    EXPECT_EQ(log_.entries()[0].category, "FileUserDefaults");

    defaults_->setObject("a", true);
    start();
    EXPECT_EQ(defaults_->object("a"), Value(true));
    EXPECT_EQ(contentsOf(folder_ / names[0]), damage);
}

TEST_F(FileUserDefaultsTests, KeepEveryDamagedFile) {
    for (const std::string damage : {"", "first", "second", "<plist><array/></plist>"}) {
        const auto before = std::chrono::floor<std::chrono::milliseconds>(Clock::now());
        ASSERT_TRUE(testing_support::waitUntil([&] { return Clock::now() - before >= 1ms; }));
        startWith(damage);
    }
    EXPECT_EQ(namesIn(folder_).size(), 4U);
    EXPECT_EQ(log_.messages().size(), 4U);
}

TEST_F(FileUserDefaultsTests, KeepAHugeFileAside) {
    writeFile(path_, "<plist><dict/></plist>");
    fs::resize_file(path_, std::uintmax_t{1} << 40U);
    start();
    EXPECT_THAT(log_.messages(), ElementsAre(HasSubstr("kept as")));
}

TEST_F(FileUserDefaultsTests, NeverOverwriteADamagedFileThatCannotBeMoved) {
    writeFile(path_, "damaged");
    fs::permissions(path_, fs::perms(0644));
    fs::permissions(temporary_.path(), fs::perms(0755));
    fs::permissions(folder_, fs::perms(0555));
    expectInChild([this] {
        const bool isUnprivileged = testing_support::becomeUnprivileged();
        start();
        changeAndEnd();
        return isUnprivileged && log_.messages().size() == 1 &&
               log_.messages()[0].find("no settings will be saved") != std::string::npos;
    });
    EXPECT_EQ(contentsOf(path_), "damaged");
    EXPECT_THAT(namesIn(folder_), ElementsAre("settings"));
}

TEST_F(FileUserDefaultsTests, LeaveAFileAloneThatMayNotBeRead) {
    writeFile(path_, "<plist version=\"1.0\"><dict/></plist>");
    fs::permissions(path_, fs::perms(0));
    for (const auto& folder : {temporary_.path(), folder_.parent_path(), folder_}) {
        fs::permissions(folder, fs::perms(0777));
    }
    expectInChild([this] {
        const bool isUnprivileged = testing_support::becomeUnprivileged();
        start();
        changeAndEnd();
        return isUnprivileged && log_.messages().size() == 1 &&
               log_.messages()[0].find("cannot be read") != std::string::npos;
    });
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0));
    fs::permissions(path_, fs::perms::owner_read);
    EXPECT_EQ(contentsOf(path_), "<plist version=\"1.0\"><dict/></plist>");
    EXPECT_THAT(namesIn(folder_), ElementsAre("settings"));
}

TEST_F(FileUserDefaultsTests, LeaveAloneWhatCannotBeRead) {
    fs::create_directories(folder_);
    const std::vector<std::function<void()>> obstacles{
        [this] { fs::create_directories(path_ / "inner"); },
        [this] { ASSERT_EQ(mkfifo(path_.c_str(), S_IRUSR | S_IWUSR), 0); },
        [this] { fs::create_symlink("settings", path_); },
        // A regular file whose first bytes cannot be read: an input/output error.
        [this] { fs::create_symlink("/proc/self/mem", path_); },
    };
    for (const auto& place : obstacles) {
        log_.clear();
        place();
        const fs::file_type type = fs::symlink_status(path_).type();
        start();
        changeAndEnd();
        EXPECT_THAT(log_.messages(), ElementsAre(HasSubstr("no settings will be saved")));
        EXPECT_EQ(fs::symlink_status(path_).type(), type);
        EXPECT_THAT(namesIn(folder_), ElementsAre("settings"));
        fs::remove_all(path_);
    }
}

TEST_F(FileUserDefaultsTests, LogAFailedWriteOnceUntilOneSucceeds) {
    start();
    for (int round = 0; round < 2; ++round) {
        log_.clear();
        fs::remove_all(folder_);
        writeFile(folder_, "a file where the folder should be");
        defaults_->setObject("a", std::string("secret"));
        for (const double number : {1.0, 2.0, 3.0}) {
            defaults_->setObject("b", number);
            endTurn();
        }
        defaults_->flush();
        EXPECT_THAT(log_.messages(),
                    ElementsAre("error: The settings cannot be saved in " + path_.string() +
                                ": Not a directory"));
        EXPECT_EQ(defaults_->object("b"), Value(3.0));

        fs::remove(folder_);
        defaults_->setObject("b", 4.0);
        endTurn();
        EXPECT_EQ(stored("a"), Value("secret"));
        EXPECT_EQ(stored("b"), Value(4.0));
        EXPECT_EQ(log_.messages().size(), 1U);
        defaults_->removeObject("a");
    }
}

TEST_F(FileUserDefaultsTests, RepeatAFailedWriteAtTheEnd) {
    start();
    writeFile(folder_, "a file where the folder should be");
    defaults_->setObject("a", 1.0);
    endTurn();
    fs::remove(folder_);
    start();
    EXPECT_EQ(defaults_->object("a"), Value(1.0));
}

TEST_F(FileUserDefaultsTests, StayAsTheyWereWhenTheDiskIsFull) {
    start();
    defaults_->setObject("a", 1.0);
    defaults_.reset();
    expectInChild([this] {
        const rlimit limit{.rlim_cur = 100, .rlim_max = 100};
        static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
        setrlimit(RLIMIT_FSIZE, &limit);
        start();
        changeAndEnd();
        return log_.messages().size() == 1;
    });
    EXPECT_EQ(stored("a"), Value(1.0));
    EXPECT_THAT(namesIn(folder_), ElementsAre("settings"));
}

TEST_F(FileUserDefaultsTests, DoNotWaitForADiskThatHangs) {
    start();
    defaults_->setObject("a", 1.0);
    endTurn();
    std::promise<void> answer;
    disk_.start([&] { answer.get_future().wait(); });
    for (const double number : {2.0, 3.0, 4.0}) {
        defaults_->setObject("a", number);
        queue_.drain();
        EXPECT_EQ(defaults_->object("a"), Value(number));
    }
    EXPECT_THAT(contentsOf(path_), HasSubstr("<real>1</real>"));
    defaults_->flush();
    EXPECT_THAT(log_.messages(), ElementsAre(HasSubstr("the disk does not respond")));
    answer.set_value();
    defaults_.reset();
    EXPECT_EQ(stored("a"), Value(4.0));
}

TEST_F(FileUserDefaultsTests, RemoveTheTemporaryFilesOfAKilledProcessAndNoOthers) {
    const fs::path dotfiles = temporary_.path() / "dotfiles";
    fs::create_directories(folder_);
    fs::create_symlink(dotfiles / "kept", path_);
    const std::vector<std::string> others{"kept",
                                          "kept.backup",
                                          "kept.AbCdEf",
                                          "kept.damaged-20261121T101500000",
                                          "other.saving-AbCdEf"};
    for (const std::string& name : others) {
        writeFile(dotfiles / name, "<plist><dict/></plist>");
    }
    writeFile(dotfiles / "kept.saving-AbCdEf", "<plist>");
    writeFile(dotfiles / "kept.saving-ghIjkL", "");
    start();
    EXPECT_THAT(namesIn(dotfiles), testing::UnorderedElementsAreArray(others));
    EXPECT_THAT(log_.messages(), IsEmpty());
}

TEST(FileUserDefaultsPathTests, IsInTheConfigurationFolder) {
    const EnvironmentVariable home("HOME", "/home/user");
    const EnvironmentVariable config("XDG_CONFIG_HOME", "/somewhere/else");
    EXPECT_EQ(FileUserDefaults::defaultPath(), "/somewhere/else/pastewise/com.app.pastewise.plist");
}

TEST(FileUserDefaultsPathTests, IsInTheHomeFolderByDefault) {
    const EnvironmentVariable home("HOME", "/home/user");
    for (const char* value : {static_cast<const char*>(nullptr), ""}) {
        const EnvironmentVariable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(FileUserDefaults::defaultPath(),
                  "/home/user/.config/pastewise/com.app.pastewise.plist");
    }
}

} // namespace
