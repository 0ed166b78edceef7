#include "Platform/Linux/SessionBus.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/PrivateBus.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>

namespace {

using platform::findSessionBus;
using testing_support::EnvironmentVariable;
using testing_support::PrivateBus;
using namespace std::chrono_literals;

constexpr auto variable = "DBUS_SESSION_BUS_ADDRESS";

/// The path of the socket in an address such as "unix:path=/tmp/dbus-abc,guid=0".
std::string pathIn(const std::string& address) {
    const std::size_t begin = address.find("path=") + 5;
    return address.substr(begin, address.find(',', begin) - begin);
}

TEST(SessionBusTests, IsWhereTheEnvironmentSays) {
    const PrivateBus bus;
    const EnvironmentVariable address(variable, bus.address().c_str());
    EXPECT_EQ(findSessionBus(10s), bus.address());
}

TEST(SessionBusTests, IsTheFirstOfSeveralThatAnswers) {
    const PrivateBus bus;
    const std::string several =
        "unixexec:path=/bin/false;unix:path=/nonexistent/bus;" + bus.address() + ";unix:path=/x";
    const EnvironmentVariable address(variable, several.c_str());
    EXPECT_EQ(findSessionBus(10s), bus.address());
}

TEST(SessionBusTests, MayHaveAnyByteInItsPath) {
    const PrivateBus bus;
    std::string escaped = "unix:path=";
    for (const char character : pathIn(bus.address())) {
        constexpr auto digits = "0123456789ABCdef";
        const auto byte = static_cast<unsigned char>(character);
        escaped += {'%', digits[byte >> 4U], digits[byte & 0x0FU]};
    }
    const EnvironmentVariable address(variable, escaped.c_str());
    EXPECT_EQ(findSessionBus(10s), escaped);
}

TEST(SessionBusTests, IsInTheRuntimeFolderWhereTheEnvironmentSaysNothing) {
    const PrivateBus bus;
    const testing_support::TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path() / "run time, 1";
    std::filesystem::create_directory(folder);
    std::filesystem::create_symlink(pathIn(bus.address()), folder / "bus");
    const EnvironmentVariable address(variable, nullptr);
    const EnvironmentVariable runtimeFolder("XDG_RUNTIME_DIR", folder.c_str());
    EXPECT_EQ(findSessionBus(10s),
              "unix:path=" + (temporary.path() / "run%20time%2c%201" / "bus").string());
}

TEST(SessionBusTests, IsNoneWhereNothingAnswers) {
    const testing_support::TemporaryFolder temporary;
    const EnvironmentVariable runtimeFolder("XDG_RUNTIME_DIR", temporary.path().c_str());
    for (const char* value : {"",
                              "disabled:",
                              "unix:",
                              "unix:path=",
                              "unix:path=%",
                              "unix:path=%zz",
                              "unix:abstract=pastewise-nobody-has-this-name",
                              "unix:path=/dev/null",
                              "unix:path=/nonexistent/bus",
                              "autolaunch:",
                              "tcp:host=localhost,port=1",
                              ";;,,=:"}) {
        const EnvironmentVariable address(variable, value);
        EXPECT_EQ(findSessionBus(10s), std::nullopt) << value;
    }
    const std::string tooLong = "unix:path=/" + std::string(500, 'x');
    const EnvironmentVariable address(variable, tooLong.c_str());
    EXPECT_EQ(findSessionBus(10s), std::nullopt);
}

TEST(SessionBusTests, IsNoneWithoutEitherVariable) {
    const EnvironmentVariable address(variable, nullptr);
    const EnvironmentVariable runtimeFolder("XDG_RUNTIME_DIR", nullptr);
    EXPECT_EQ(findSessionBus(10s), std::nullopt);
}

TEST(SessionBusTests, IsNoneWhereItHangs) {
    PrivateBus bus;
    const EnvironmentVariable address(variable, bus.address().c_str());
    bus.suspend();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(findSessionBus(100ms), std::nullopt);
    const auto passed = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(passed, 100ms);
    EXPECT_LT(passed, 10s);
    bus.resume();
    EXPECT_EQ(findSessionBus(10s), bus.address());
}

} // namespace
