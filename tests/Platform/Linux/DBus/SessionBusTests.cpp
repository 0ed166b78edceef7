#include "Platform/Linux/DBus/SessionBus.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/PrivateBus.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::SessionBus;
using testing_support::EnvironmentVariable;
using testing_support::QtTestLoop;

struct AddressRow {
    const char* address;
    const char* runtimeFolder;
    std::string expected;
};

TEST(SessionBusAddressTests, ComesFromTheEnvironmentAndNeverStartsABus) {
    const std::string inFolder = "unix:path=/run/user/1000/bus";
    for (const AddressRow& row :
         {AddressRow{"unix:path=/a", "/run/user/1000", "unix:path=/a"},
          AddressRow{"unix:path=/a;unix:abstract=b", nullptr, "unix:path=/a;unix:abstract=b"},
          AddressRow{"unix:path=/a;autolaunch:scope=user", nullptr, "unix:path=/a"},
          AddressRow{"autolaunch:", "/run/user/1000", inFolder},
          AddressRow{"", "/run/user/1000", inFolder},
          AddressRow{nullptr, "/run/user/1000", inFolder},
          AddressRow{nullptr, "/run time,~1", "unix:path=/run%20time%2C%7E1/bus"},
          AddressRow{nullptr, "relative", "disabled:"},
          AddressRow{"autolaunch:", nullptr, "disabled:"},
          AddressRow{nullptr, nullptr, "disabled:"}}) {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", row.address);
        const EnvironmentVariable folder("XDG_RUNTIME_DIR", row.runtimeFolder);
        EXPECT_EQ(SessionBus::addressFromEnvironment(), row.expected);
    }
}

class SessionBusTests : public testing::Test {
  protected:
    /// Notes each change as connected or not.
    SessionBus watch(const std::string& address) {
        return {address, [this](const auto& bus) { changes_.push_back(bus.isConnected()); }};
    }

    bool waitForChanges(const std::vector<bool>& expected) {
        return QtTestLoop::turnUntil([&] { return changes_ == expected; });
    }

    testing_support::PrivateBus bus_;
    QtTestLoop loop_;
    std::vector<bool> changes_;
};

TEST_F(SessionBusTests, ConnectsFromTheEventLoop) {
    const auto sessionBus = watch(bus_.address());
    EXPECT_TRUE(changes_.empty());
    EXPECT_TRUE(waitForChanges({true}));
}

TEST_F(SessionBusTests, ConnectsAtTheFirstAddressThatWorks) {
    const auto sessionBus = watch("unix:path=/nonexistent/bus;" + bus_.address());
    EXPECT_TRUE(waitForChanges({true}));
}

TEST_F(SessionBusTests, WaitsForABusThatHangsWithoutBlockingTheEventLoop) {
    bus_.suspend();
    const auto sessionBus = watch(bus_.address());
    // Far longer than it takes to connect to a bus that answers.
    EXPECT_FALSE(
        QtTestLoop::turnUntil([&] { return !changes_.empty(); }, std::chrono::milliseconds(500)));
    bus_.resume();
    EXPECT_TRUE(waitForChanges({true}));
}

TEST_F(SessionBusTests, ConnectsAgainWhenTheBusWasRestarted) {
    const auto sessionBus = watch(bus_.address());
    ASSERT_TRUE(waitForChanges({true}));
    bus_.kill();
    ASSERT_TRUE(waitForChanges({true, false}));
    bus_.start();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return changes_.back(); }));
}

TEST_F(SessionBusTests, ConnectsToABusThatStartsLate) {
    bus_.kill();
    const auto sessionBus = watch(bus_.address());
    ASSERT_TRUE(waitForChanges({false}));
    bus_.start();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return changes_.back(); }));
}

TEST_F(SessionBusTests, DoesWithoutABusWhereTheAddressIsUnusable) {
    for (const char* address :
         {"disabled:", "unix:", "unix:path=", "unix:path=%zz", "unix:path=/dev/null", ";;,,=:"}) {
        changes_.clear();
        const auto sessionBus = watch(address);
        EXPECT_TRUE(waitForChanges({false})) << address;
    }
}

} // namespace
