#include "Platform/Linux/Store/Autostart.h"
#include "tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QString>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using platform::Autostart;
using testing::HasSubstr;

class AutostartTests : public testing::Test {
  protected:
    [[nodiscard]] Autostart autostart(const QString& program = "/usr/bin/pastewise") const {
        return Autostart(QString::fromStdString(path_.string()), program);
    }

    [[nodiscard]] std::string entry() const {
        std::ifstream file(path_);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    testing_support::TemporaryFolder folder_;
    std::filesystem::path path_ = folder_.path() / "config" / "autostart" / "entry.desktop";
};

TEST_F(AutostartTests, MakesTheEntryAndItsFolders) {
    EXPECT_EQ(autostart().setEnabled(true), "");
    EXPECT_THAT(entry(), HasSubstr("\nExec=\"/usr/bin/pastewise\"\n"));
    EXPECT_THAT(entry(), HasSubstr("\nType=Application\n"));
}

TEST_F(AutostartTests, ReplacesAnEntryOfAnotherProgramFile) {
    EXPECT_EQ(autostart("/opt/old/pastewise").setEnabled(true), "");
    EXPECT_EQ(autostart().setEnabled(true), "");
    EXPECT_THAT(entry(), HasSubstr("\nExec=\"/usr/bin/pastewise\"\n"));
}

TEST_F(AutostartTests, QuotesThePathOfTheProgram) {
    EXPECT_EQ(autostart(R"(/a b/100%/$x/\"pastewise)").setEnabled(true), "");
    EXPECT_THAT(entry(), HasSubstr("\nExec=\"/a b/100%%/\\\\$x/\\\\\\\\\\\\\"pastewise\"\n"));
}

TEST_F(AutostartTests, RemovesTheEntry) {
    EXPECT_EQ(autostart().setEnabled(true), "");
    EXPECT_EQ(autostart().setEnabled(false), "");
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(AutostartTests, HasNothingToRemoveIfThereIsNoEntry) {
    EXPECT_EQ(autostart().setEnabled(false), "");
}

TEST_F(AutostartTests, SaysWhyTheEntryCannotBeWritten) {
    // A file where the folder should be, which stops root as well.
    std::filesystem::create_directories(path_.parent_path().parent_path());
    std::ofstream(path_.parent_path()) << "not a folder";
    EXPECT_NE(autostart().setEnabled(true), "");
}

} // namespace
