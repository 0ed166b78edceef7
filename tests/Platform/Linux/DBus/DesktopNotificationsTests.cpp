#include "Platform/Linux/DBus/DesktopNotifications.h"
#include "Platform/Linux/DBus/SessionBus.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateBus.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using platform::SessionBus;
using testing_support::ChildProcess;
using testing_support::QtTestLoop;

class DesktopNotificationsTests : public testing::Test {
  protected:
    void show(const std::string& title) {
        notifications_.show({.title = title,
                             .body = "Body, with \"quotes\" & ü",
                             .actionTitle = "Open",
                             .action = [this, title] { chosen_.push_back(title); }});
    }

    void startService() {
        service_ =
            std::make_unique<ChildProcess>(std::vector<std::string>{PASTEWISE_NOTIFICATION_SERVICE},
                                           ChildProcess::Options{.environment = environment()});
        EXPECT_TRUE(service_->waitForOutput("ready")) << service_->standardError();
    }

    bool turnUntilShown(const std::string& line) {
        return QtTestLoop::turnUntil(
            [&] { return service_->standardOutput() == "ready\n" + line + '\n'; });
    }

    /// What the service does when the user chooses an action of a notification.
    void choose(const std::string& id, const std::string& action) {
        ChildProcess gdbus({"gdbus",
                            "emit",
                            "--session",
                            "--object-path=/org/freedesktop/Notifications",
                            "--signal=org.freedesktop.Notifications.ActionInvoked",
                            "uint32 " + id,
                            "'" + action + "'"},
                           {.environment = environment()});
        EXPECT_EQ(gdbus.waitForExit(), 0) << gdbus.standardError();
    }

    /// Chooses a notification until the action of the one with that title, and of no other, is
    /// called.
    bool chooseUntil(const std::string& id, const std::string& title) {
        QtTestLoop::turnUntil([&] {
            choose(id, "default");
            return !chosen_.empty();
        });
        return !chosen_.empty() && chosen_.front() == title;
    }

    bool turnUntilConnected() {
        return QtTestLoop::turnUntil([this] { return isConnected_ == true; });
    }

    [[nodiscard]] std::map<std::string, std::string> environment() const {
        return {{"DBUS_SESSION_BUS_ADDRESS", bus_.address()}};
    }

    testing_support::PrivateBus bus_;
    QtTestLoop loop_;
    std::unique_ptr<ChildProcess> service_;
    std::vector<std::string> chosen_;
    platform::DesktopNotifications notifications_;
    std::optional<bool> isConnected_;
    SessionBus sessionBus_{bus_.address(), [this](const auto& bus) {
                               isConnected_ = bus.isConnected();
                               notifications_.setBus(bus);
                           }};
};

TEST_F(DesktopNotificationsTests, ShowsAMessageAndCallsItsAction) {
    startService();
    ASSERT_TRUE(turnUntilConnected());
    show("One");
    const std::string first = "1 Pastewise|One|Body, with \"quotes\" & ü|default,Open";
    ASSERT_TRUE(turnUntilShown(first));
    show("Two");
    ASSERT_TRUE(turnUntilShown(first + "\n2 Pastewise|Two|Body, with \"quotes\" & ü|default,Open"));
    choose("3", "default");
    choose("1", "other");
    EXPECT_TRUE(chooseUntil("2", "Two"));
}

TEST_F(DesktopNotificationsTests, AMessageWaitsForTheBus) {
    startService();
    show("One");
    EXPECT_TRUE(turnUntilShown("1 Pastewise|One|Body, with \"quotes\" & ü|default,Open"));
}

TEST_F(DesktopNotificationsTests, AMessageWaitsForAService) {
    ASSERT_TRUE(turnUntilConnected());
    show("One");
    startService();
    EXPECT_TRUE(turnUntilShown("1 Pastewise|One|Body, with \"quotes\" & ü|default,Open"));
}

TEST_F(DesktopNotificationsTests, AMessageIsShownOnce) {
    startService();
    show("One");
    ASSERT_TRUE(turnUntilShown("1 Pastewise|One|Body, with \"quotes\" & ü|default,Open"));
    // The service has replied if its notification can be chosen.
    ASSERT_TRUE(chooseUntil("1", "One"));
    service_.reset();
    startService();
    show("Two");
    EXPECT_TRUE(turnUntilShown("1 Pastewise|Two|Body, with \"quotes\" & ü|default,Open"));
}

} // namespace
