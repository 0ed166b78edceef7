#include "Platform/Linux/ProcessSetup.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>

namespace {

namespace fs = std::filesystem;
using platform::InstanceLock;

class InstanceLockTests : public testing::Test {
  protected:
    testing_support::TemporaryFolder temporary_;
    fs::path path_ = temporary_.path() / "lock";
};

TEST_F(InstanceLockTests, OneInstanceGetsIt) {
    const InstanceLock first(path_);
    EXPECT_TRUE(first.tryToLock());
    EXPECT_TRUE(first.tryToLock());
    const InstanceLock second(path_);
    EXPECT_FALSE(second.tryToLock());
    EXPECT_EXIT(std::exit(InstanceLock(path_).tryToLock() ? 0 : 1), testing::ExitedWithCode(1), "");
}

TEST_F(InstanceLockTests, IsReleasedWhenTheInstanceEnds) {
    std::optional<InstanceLock> first(std::in_place, path_);
    ASSERT_TRUE(first->tryToLock());
    const InstanceLock second(path_);
    ASSERT_FALSE(second.tryToLock());
    first.reset();
    EXPECT_TRUE(second.tryToLock());
}

TEST_F(InstanceLockTests, IsReleasedWhenTheInstanceIsKilled) {
    EXPECT_EXIT(
        {
            const InstanceLock lock(path_);
            if (lock.tryToLock()) {
                static_cast<void>(std::raise(SIGKILL));
            }
        },
        testing::KilledBySignal(SIGKILL),
        "");
    EXPECT_TRUE(fs::exists(path_));
    EXPECT_TRUE(InstanceLock(path_).tryToLock());
}

TEST_F(InstanceLockTests, IsNotInheritedByProgramsThatTheInstanceStarts) {
    std::optional<InstanceLock> first(std::in_place, path_);
    ASSERT_TRUE(first->tryToLock());
    const testing_support::ChildProcess program({"sleep", "60"});
    first.reset();
    // The child has the descriptor until it executes the program.
    const InstanceLock second(path_);
    EXPECT_TRUE(testing_support::waitUntil([&] { return second.tryToLock(); }));
}

TEST_F(InstanceLockTests, OnlyTheUserCanReadTheFile) {
    const mode_t previous = umask(0);
    const InstanceLock lock(path_);
    umask(previous);
    EXPECT_EQ(static_cast<unsigned>(fs::status(path_).permissions()), 0600U);
}

TEST_F(InstanceLockTests, AFileThatCannotBeMadeKeepsNoInstanceFromRunning) {
    EXPECT_TRUE(InstanceLock(temporary_.path() / "missing" / "lock").tryToLock());
    EXPECT_TRUE(InstanceLock(fs::path()).tryToLock());
}

TEST_F(InstanceLockTests, FollowsNoSymbolicLink) {
    fs::create_symlink(temporary_.path() / "victim", path_);
    EXPECT_TRUE(InstanceLock(path_).tryToLock());
    EXPECT_FALSE(fs::exists(temporary_.path() / "victim"));
}

TEST(InstanceLockPathTests, IsInTheRuntimeFolder) {
    const testing_support::EnvironmentVariable folder("XDG_RUNTIME_DIR", "/run/user/1000");
    EXPECT_EQ(InstanceLock::defaultPath(), "/run/user/1000/com.app.pastewise.lock");
}

TEST(InstanceLockPathTests, IsEmptyWithoutARuntimeFolder) {
    for (const char* value : {static_cast<const char*>(nullptr), "", "relative"}) {
        const testing_support::EnvironmentVariable folder("XDG_RUNTIME_DIR", value);
        EXPECT_TRUE(InstanceLock::defaultPath().empty());
    }
}

} // namespace
