#include "Platform/Platform.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <variant>

namespace {

/// Makes the platform in a process that was started with a closed standard output, and ends with
/// the number of characters that arrive in a file which gets its number later.
[[noreturn]] void writeToClosedStandardOutput() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        std::_Exit(100);
    }
    close(STDOUT_FILENO);
    int argc = 1;
    std::array<char, 5> name{"test"};
    std::array<char*, 2> argv{name.data(), nullptr};
    platform::PlatformOrNot made = platform::makePlatform(argc, argv.data());
    dup2(ends[1], STDOUT_FILENO);
    std::get<std::unique_ptr<platform::Platform>>(made)->standardOutput().writeLine("text");
    close(ends[1]);
    close(STDOUT_FILENO);
    std::array<char, 10> arrived{};
    std::_Exit(static_cast<int>(read(ends[0], arrived.data(), arrived.size())));
}

TEST(MacPlatformDeathTests, WritesNothingIfStandardOutputIsClosedAtTheStart) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(writeToClosedStandardOutput(), testing::ExitedWithCode(0), "");
}

} // namespace
