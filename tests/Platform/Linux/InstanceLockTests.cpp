#include "Platform/Linux/InstanceLock.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using platform::InstanceLock;
using Result = platform::InstanceLock::Result;

class InstanceLockTests : public testing::Test {
  protected:
    testing_support::TemporaryFolder temporary_;
    fs::path path_ = temporary_.path() / "lock";
};

TEST_F(InstanceLockTests, GoesToTheFirstInstance) {
    const InstanceLock first(path_);
    EXPECT_EQ(first.result(), Result::acquired);
    const InstanceLock second(path_);
    EXPECT_EQ(second.result(), Result::taken);
    EXPECT_EXIT(std::exit(InstanceLock(path_).result() == Result::taken ? 0 : 1),
                testing::ExitedWithCode(0),
                "");
}

TEST_F(InstanceLockTests, IsFreeAgainWhenTheInstanceEnds) {
    std::optional<InstanceLock> first(std::in_place, path_);
    first.reset();
    EXPECT_EQ(InstanceLock(path_).result(), Result::acquired);
}

TEST_F(InstanceLockTests, IsFreeAgainWhenTheInstanceWasKilled) {
    EXPECT_EXIT(
        {
            const InstanceLock lock(path_);
            if (lock.result() == Result::acquired) {
                static_cast<void>(std::raise(SIGKILL));
            }
        },
        testing::KilledBySignal(SIGKILL),
        "");
    EXPECT_TRUE(fs::exists(path_));
    EXPECT_EQ(InstanceLock(path_).result(), Result::acquired);
}

TEST_F(InstanceLockTests, IsWaitedForWhereTheInstanceEndsInTime) {
    testing_support::ChildProcess other(
        {"flock", path_.string(), "sh", "-c", "read line; sleep 0.5"}, {.keepsInputOpen = true});
    ASSERT_TRUE(
        testing_support::waitUntil([&] { return InstanceLock(path_).result() == Result::taken; }));
    other.write("end\n");
    EXPECT_EQ(InstanceLock(path_, testing_support::patience).result(), Result::acquired);
}

TEST_F(InstanceLockTests, IsGivenUpWhereTheInstanceStays) {
    const InstanceLock first(path_);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(InstanceLock(path_, 100ms).result(), Result::taken);
    const auto waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, 100ms);
    EXPECT_LT(waited, testing_support::patience);
}

TEST_F(InstanceLockTests, IsNotHandedToProgramsThatTheInstanceStarts) {
    std::optional<InstanceLock> first(std::in_place, path_);
    const testing_support::ChildProcess program({"sleep", "60"});
    first.reset();
    // The new program lets go of it where it begins to run.
    EXPECT_TRUE(testing_support::waitUntil(
        [&] { return InstanceLock(path_).result() == Result::acquired; }));
}

TEST_F(InstanceLockTests, IsForTheUserAlone) {
    const mode_t previous = umask(0);
    const InstanceLock lock(path_);
    umask(previous);
    EXPECT_EQ(static_cast<unsigned>(fs::status(path_).permissions()), 0600U);
}

TEST_F(InstanceLockTests, IsUnavailableWhereTheFileCannotBeMade) {
    EXPECT_EQ(InstanceLock(temporary_.path() / "missing" / "lock").result(), Result::unavailable);
    EXPECT_EQ(InstanceLock({}).result(), Result::unavailable);
}

TEST_F(InstanceLockTests, FollowsNoLinkThatSomebodyPutInItsPlace) {
    fs::create_symlink(temporary_.path() / "victim", path_);
    EXPECT_EQ(InstanceLock(path_).result(), Result::unavailable);
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
