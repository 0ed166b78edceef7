#include "Platform/Linux/Qt/QtWorkspace.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

/// A desktop whose opener of URLs writes down what it is asked to open.
class QtWorkspaceTests : public testing::Test {
  protected:
    void SetUp() override {
        const auto opener = folder_.path() / "xdg-open";
        std::ofstream(opener) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >>\"" << list().string()
                              << "\"\n";
        std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
        const std::string path =
            folder_.path().string() + ":" + (std::getenv("PATH") ? std::getenv("PATH") : "");
        setenv("PATH", path.c_str(), 1);
    }

    [[nodiscard]] std::filesystem::path list() const { return folder_.path() / "opened"; }

    [[nodiscard]] std::string opened() const {
        std::ostringstream text;
        text << std::ifstream(list()).rdbuf();
        return text.str();
    }

    testing_support::TemporaryFolder folder_;
    testing_support::QtDesktop desktop_;
    platform::QtWorkspace workspace_;
};

TEST_F(QtWorkspaceTests, HandsAUrlToTheDesktop) {
    EXPECT_TRUE(workspace_.openURL("https://example.org/path?query=1#part"));
    EXPECT_TRUE(testing_support::QtTestLoop::turnUntil([&] {
        return opened() == "https://example.org/path?query=1#part\n";
    })) << opened();
}

TEST_F(QtWorkspaceTests, RefusesWhatIsNoUrl) {
    for (const char* text : {"", "no scheme", "relative/path", "/etc/passwd", "http://[broken"}) {
        EXPECT_FALSE(workspace_.openURL(text)) << text;
    }
    EXPECT_EQ(opened(), "");
}

} // namespace
