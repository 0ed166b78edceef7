#include "Platform/Linux/Store/SettingsFile.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/UnprivilegedUser.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>

namespace {

namespace fs = std::filesystem;
using platform::SettingsFile;
using namespace std::chrono_literals;

constexpr std::size_t noLimit = 1'000'000;

/// 2026-11-21 10:15:00 UTC
constexpr std::chrono::system_clock::time_point morning =
    std::chrono::sys_days(2026y / std::chrono::November / 21) + 10h + 15min;

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const std::string& contents) {
    std::ofstream(path, std::ios::binary) << contents;
}

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename());
    }
    return names;
}

unsigned modeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
}

class SettingsFileTests : public testing::Test {
  protected:
    testing_support::TemporaryFolder temporary_;
    fs::path folder_ = temporary_.path() / "config" / "pastewise";
    fs::path path_ = folder_ / "settings";
    SettingsFile file_{path_};
};

TEST_F(SettingsFileTests, ReadsNeitherBytesNorAnErrorWhereThereIsNoFile) {
    const auto contents = file_.read(noLimit);
    EXPECT_FALSE(contents.bytes);
    EXPECT_FALSE(contents.error);
}

TEST_F(SettingsFileTests, ReadsWhatItWrote) {
    const std::string bytes("\0\xFF text \n\0", 10);
    EXPECT_FALSE(file_.write("something longer that goes"));
    EXPECT_FALSE(file_.write(bytes));
    EXPECT_EQ(file_.read(noLimit).bytes, bytes);
    EXPECT_EQ(namesIn(folder_), std::set<std::string>{"settings"});
}

TEST_F(SettingsFileTests, MakesFilesAndFoldersForTheUserAlone) {
    const mode_t previous = umask(0);
    EXPECT_FALSE(file_.write("x"));
    umask(previous);
    EXPECT_EQ(modeOf(path_), 0600U);
    EXPECT_EQ(modeOf(folder_), 0700U);
    EXPECT_EQ(modeOf(folder_.parent_path()), 0700U);
}

TEST_F(SettingsFileTests, TakesRightsOfOthersFromAFileThatHadThem) {
    fs::create_directories(folder_);
    writeFile(path_, "old");
    fs::permissions(path_, fs::perms(0666));
    EXPECT_FALSE(file_.write("new"));
    EXPECT_EQ(modeOf(path_), 0600U);
}

TEST_F(SettingsFileTests, ReplacesTheFileInsteadOfWritingIntoIt) {
    EXPECT_FALSE(file_.write("old"));
    std::ifstream reader(path_);
    EXPECT_FALSE(file_.write("new"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
    EXPECT_EQ(contentsOf(path_), "new");
}

TEST_F(SettingsFileTests, WritesTheFileThatASymbolicLinkLeadsTo) {
    fs::create_directories(folder_);
    const fs::path dotfiles = temporary_.path() / "dotfiles";
    fs::create_directories(dotfiles);
    writeFile(dotfiles / "kept", "old");
    fs::create_symlink("../../dotfiles/second", path_);
    fs::create_symlink("kept", dotfiles / "second");
    EXPECT_FALSE(file_.write("new"));
    EXPECT_TRUE(fs::is_symlink(path_));
    EXPECT_TRUE(fs::is_symlink(dotfiles / "second"));
    EXPECT_EQ(contentsOf(dotfiles / "kept"), "new");
    EXPECT_EQ(namesIn(folder_), std::set<std::string>{"settings"});
    EXPECT_EQ(namesIn(dotfiles), (std::set<std::string>{"kept", "second"}));
}

TEST_F(SettingsFileTests, MakesTheFileThatASymbolicLinkLeadsTo) {
    fs::create_directories(folder_);
    fs::create_symlink(temporary_.path() / "elsewhere" / "settings", path_);
    EXPECT_FALSE(file_.read(noLimit).error);
    EXPECT_FALSE(file_.write("new"));
    EXPECT_TRUE(fs::is_symlink(path_));
    EXPECT_EQ(contentsOf(temporary_.path() / "elsewhere" / "settings"), "new");
}

TEST_F(SettingsFileTests, SetsLinksAsideThatLeadInACircle) {
    fs::create_directories(folder_);
    fs::create_symlink("settings", path_);
    EXPECT_EQ(file_.read(noLimit).error, std::errc::too_many_symbolic_link_levels);
    EXPECT_FALSE(file_.setAside(morning).error);
    EXPECT_FALSE(file_.write("new"));
    EXPECT_EQ(contentsOf(path_), "new");
}

TEST_F(SettingsFileTests, RefusesWhatIsNoFileWithoutWaiting) {
    fs::create_directories(path_);
    EXPECT_EQ(file_.read(noLimit).error, std::errc::is_a_directory);
    fs::remove(path_);
    ASSERT_EQ(mkfifo(path_.c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_TRUE(file_.read(noLimit).error);
}

TEST_F(SettingsFileTests, RefusesAFileThatIsTooLarge) {
    EXPECT_FALSE(file_.write(std::string(1000, 'x')));
    EXPECT_EQ(file_.read(999).error, std::errc::file_too_large);
    EXPECT_EQ(file_.read(1000).bytes, std::string(1000, 'x'));
}

TEST_F(SettingsFileTests, SetsAsideUnderTheTimeInUtc) {
    EXPECT_FALSE(file_.write("damaged"));
    const auto kept = file_.setAside(morning);
    EXPECT_FALSE(kept.error);
    EXPECT_EQ(kept.path, folder_ / "settings.damaged-20261121T101500");
    EXPECT_EQ(contentsOf(kept.path), "damaged");
    EXPECT_FALSE(fs::exists(path_));
}

TEST_F(SettingsFileTests, NeverReplacesWhatWasSetAsideBefore) {
    for (const std::string contents : {"first", "second", "third"}) {
        EXPECT_FALSE(file_.write(contents));
        EXPECT_FALSE(file_.setAside(morning).error);
    }
    const std::string name = "settings.damaged-20261121T101500";
    EXPECT_EQ(contentsOf(folder_ / name), "first");
    EXPECT_EQ(contentsOf(folder_ / (name + "-2")), "second");
    EXPECT_EQ(contentsOf(folder_ / (name + "-3")), "third");
}

TEST_F(SettingsFileTests, SetsAFolderInTheFilesPlaceAside) {
    fs::create_directories(path_ / "inner");
    const auto kept = file_.setAside(morning);
    EXPECT_FALSE(kept.error);
    EXPECT_TRUE(fs::is_directory(kept.path / "inner"));
}

TEST_F(SettingsFileTests, SaysWhyItCannotWriteBelowWhatIsNoFolder) {
    writeFile(temporary_.path() / "config", "a file");
    EXPECT_EQ(file_.write("x"), std::errc::not_a_directory);
    EXPECT_FALSE(file_.read(noLimit).error);
    EXPECT_EQ(contentsOf(temporary_.path() / "config"), "a file");
}

TEST_F(SettingsFileTests, SaysWhyItCannotWriteWithoutAPath) {
    EXPECT_EQ(SettingsFile({}).write("x"), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(SettingsFile({}).read(noLimit).error);
}

TEST_F(SettingsFileTests, LeavesTheOldFileAndNoOtherWhenTheDiskTakesOnlyAPart) {
    EXPECT_FALSE(file_.write("old"));
    constexpr rlimit limit{.rlim_cur = 100, .rlim_max = 100};
    EXPECT_EXIT(
        {
            static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
            setrlimit(RLIMIT_FSIZE, &limit);
            std::exit(file_.write(std::string(1000, 'x')) == std::errc::file_too_large ? 0 : 1);
        },
        testing::ExitedWithCode(0),
        "");
    EXPECT_EQ(contentsOf(path_), "old");
    EXPECT_EQ(namesIn(folder_), std::set<std::string>{"settings"});
}

TEST_F(SettingsFileTests, LeavesTheOldFileWhereTheFolderTakesNoOther) {
    EXPECT_FALSE(file_.write("old"));
    fs::permissions(temporary_.path(), fs::perms(0755));
    fs::permissions(folder_.parent_path(), fs::perms(0755));
    fs::permissions(folder_, fs::perms(0555));
    EXPECT_EXIT(
        {
            const bool isOrdinary = testing_support::becomeUnprivileged();
            const bool isRefused = file_.write("new") == std::errc::permission_denied &&
                                   file_.setAside(morning).error == std::errc::permission_denied;
            std::exit(isOrdinary && isRefused ? 0 : 1);
        },
        testing::ExitedWithCode(0),
        "");
    fs::permissions(folder_, fs::perms(0755));
    EXPECT_EQ(contentsOf(path_), "old");
    EXPECT_EQ(namesIn(folder_), std::set<std::string>{"settings"});
}

TEST_F(SettingsFileTests, SaysThatItMayNotRead) {
    EXPECT_FALSE(file_.write("closed"));
    fs::permissions(path_, fs::perms(0));
    for (const auto& folder : {temporary_.path(), folder_.parent_path(), folder_}) {
        fs::permissions(folder, fs::perms(0777));
    }
    EXPECT_EXIT(
        {
            const bool isOrdinary = testing_support::becomeUnprivileged();
            const bool isRefused = file_.read(noLimit).error == std::errc::permission_denied;
            std::exit(isOrdinary && isRefused && !file_.setAside(morning).error ? 0 : 1);
        },
        testing::ExitedWithCode(0),
        "");
}

} // namespace
