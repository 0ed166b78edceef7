#include "Platform/Linux/DBus/DBusApplication.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/PrivateBus.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>
#include <chrono>
#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using platform::DBusApplication;
using Claim = platform::DBusApplication::Claim;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::ChildProcess;
using testing_support::QtTestLoop;

const std::string serviceUnknown = "org.freedesktop.DBus.Error.ServiceUnknown";

class DBusApplicationTests : public testing::Test {
  protected:
    void setRequests() {
        application_->setRequests(
            {.convert = [this] { requests_.emplace_back("convert"); },
             .openPreferences = [this] { requests_.emplace_back("preferences"); }});
    }

    /// What another program gets for calling the method: standard output and error of its client.
    /// Turns the event loop until the answer is there.
    std::string call(const std::string& method, const std::vector<std::string>& arguments) {
        std::vector<std::string> command{"gdbus",
                                         "call",
                                         "--session",
                                         "--timeout=10",
                                         "--dest=com.app.pastewise",
                                         "--object-path=/com/app/pastewise",
                                         "--method=" + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        ChildProcess client(command);
        QtTestLoop::turnUntil([&] { return !client.isRunning(); });
        return client.standardOutput() + client.standardError();
    }

    std::string callApplication(const std::string& method,
                                const std::vector<std::string>& arguments) {
        return call("org.freedesktop.Application." + method, arguments);
    }

    bool turnUntilRequests(std::size_t count) {
        return QtTestLoop::turnUntil([&] { return requests_.size() >= count; });
    }

    testing_support::PrivateBus bus_;
    testing_support::EnvironmentVariable address_{"DBUS_SESSION_BUS_ADDRESS",
                                                  bus_.address().c_str()};
    QtTestLoop loop_;
    std::optional<DBusApplication> application_{std::in_place, [] {}};
    std::vector<std::string> requests_;
};

TEST_F(DBusApplicationTests, IsTheFirstWhereNobodyHasTheName) {
    EXPECT_EQ(application_->claim(), Claim::first);
}

TEST_F(DBusApplicationTests, ConvertsWhenAskedTo) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    EXPECT_EQ(callApplication("ActivateAction", {"convert", "[]", "{}"}), "()\n");
    EXPECT_THAT(requests_, ElementsAre("convert"));
}

TEST_F(DBusApplicationTests, OpensPreferencesWhenAskedTo) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    EXPECT_EQ(callApplication("ActivateAction", {"preferences", "[<true>]", "{'a': <'b'>}"}),
              "()\n");
    EXPECT_THAT(requests_, ElementsAre("preferences"));
}

TEST_F(DBusApplicationTests, OpensPreferencesWhenActivatedOrGivenFiles) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    EXPECT_EQ(callApplication("Activate", {"{}"}), "()\n");
    EXPECT_THAT(requests_, ElementsAre("preferences"));
    EXPECT_EQ(callApplication("Open", {"['file:///tmp/list.txt']", "{}"}), "()\n");
    EXPECT_THAT(requests_, ElementsAre("preferences", "preferences"));
}

TEST_F(DBusApplicationTests, AnswersAnActionThatDoesNotExistWithAnError) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    for (const std::string name : {"", "Convert", "quit"}) {
        EXPECT_THAT(callApplication("ActivateAction", {name, "[]", "{}"}),
                    HasSubstr("org.freedesktop.DBus.Error.InvalidArgs"));
    }
    EXPECT_THAT(requests_, IsEmpty());
}

TEST_F(DBusApplicationTests, AnswersArgumentsOfTheWrongTypesWithAnError) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    // Without a description of the object the client sends the types that it is told.
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{},
          std::vector<std::string>{"string:convert"},
          std::vector<std::string>{"string:convert", "string:x", "string:y"},
          std::vector<std::string>{"int32:1"}}) {
        std::vector<std::string> command{"dbus-send",
                                         "--session",
                                         "--print-reply",
                                         "--dest=com.app.pastewise",
                                         "/com/app/pastewise",
                                         "org.freedesktop.Application.ActivateAction"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        ChildProcess client(command);
        QtTestLoop::turnUntil([&] { return !client.isRunning(); });
        EXPECT_THAT(client.standardError(), HasSubstr("org.freedesktop.DBus.Error.InvalidArgs"));
    }
    EXPECT_THAT(requests_, IsEmpty());
}

TEST_F(DBusApplicationTests, AnswersWhatItDoesNotKnowWithAnError) {
    ASSERT_EQ(application_->claim(), Claim::first);
    EXPECT_THAT(callApplication("Close", {}), HasSubstr("org.freedesktop.DBus.Error.Unknown"));
    EXPECT_THAT(call("com.example.Other.Activate", {"{}"}),
                HasSubstr("org.freedesktop.DBus.Error.Unknown"));
}

TEST_F(DBusApplicationTests, DescribesItself) {
    ASSERT_EQ(application_->claim(), Claim::first);
    const std::string description = call("org.freedesktop.DBus.Introspectable.Introspect", {});
    for (const std::string part :
         {"org.freedesktop.Application", "Activate", "Open", "ActivateAction", "a{sv}"}) {
        EXPECT_THAT(description, HasSubstr(part));
    }
}

TEST_F(DBusApplicationTests, ServesCallersThatWantNoAnswer) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    const QDBusConnection client =
        QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "client");
    QDBusMessage request = QDBusMessage::createMethodCall(
        "com.app.pastewise", "/com/app/pastewise", "org.freedesktop.Application", "Activate");
    request << QVariantMap();
    EXPECT_TRUE(client.send(request));
    EXPECT_TRUE(turnUntilRequests(1));
    EXPECT_THAT(requests_, ElementsAre("preferences"));
    QDBusConnection::disconnectFromBus("client");
}

TEST_F(DBusApplicationTests, KeepsRequestsUntilSomebodyTakesThem) {
    ASSERT_EQ(application_->claim(), Claim::first);
    EXPECT_EQ(callApplication("ActivateAction", {"convert", "[]", "{}"}), "()\n");
    EXPECT_EQ(callApplication("Activate", {"{}"}), "()\n");
    setRequests();
    EXPECT_THAT(requests_, IsEmpty());
    EXPECT_TRUE(turnUntilRequests(2));
    EXPECT_THAT(requests_, ElementsAre("convert", "preferences"));
    setRequests();
    QtTestLoop::turn();
    EXPECT_EQ(requests_.size(), 2U);
}

TEST_F(DBusApplicationTests, AnswersBeforeItDoesWhatItIsAskedFor) {
    ASSERT_EQ(application_->claim(), Claim::first);
    bool wasAnsweredMeanwhile = false;
    std::unique_ptr<ChildProcess> client;
    application_->setRequests(
        {.convert = [&] { wasAnsweredMeanwhile = client->waitForExit() == 0; },
         .openPreferences = {}});
    client = std::make_unique<ChildProcess>(
        std::vector<std::string>{"gdbus",
                                 "call",
                                 "--session",
                                 "--dest=com.app.pastewise",
                                 "--object-path=/com/app/pastewise",
                                 "--method=org.freedesktop.Application.ActivateAction",
                                 "convert",
                                 "[]",
                                 "{}"});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return wasAnsweredMeanwhile; }));
}

TEST_F(DBusApplicationTests, HasASecondStartOpenThePreferencesOfTheFirst) {
    ASSERT_EQ(application_->claim(), Claim::first);
    setRequests();
    ChildProcess second({PASTEWISE_START_PROGRAM});
    QtTestLoop::turnUntil([&] { return !second.isRunning(); });
    EXPECT_EQ(second.standardOutput(), "already running\n");
    EXPECT_THAT(requests_, ElementsAre("preferences"));
}

TEST_F(DBusApplicationTests, AsksTheFirstInstanceToOpenItsPreferences) {
    ChildProcess first({PASTEWISE_START_PROGRAM});
    ASSERT_TRUE(first.waitForOutput("first\n"));
    EXPECT_EQ(application_->claim(), Claim::alreadyRunning);
    EXPECT_TRUE(first.waitForOutput("preferences\n"));
}

TEST_F(DBusApplicationTests, DoesNotTellTheFirstInstanceOfAStartThatIsToEndQuietly) {
    ChildProcess first({PASTEWISE_START_PROGRAM});
    ASSERT_TRUE(first.waitForOutput("first\n"));
    EXPECT_EQ(application_->claim(DBusApplication::SecondStart::endsQuietly),
              Claim::alreadyRunning);
    // What the first is asked for comes in turn.
    callApplication("ActivateAction", {"convert", "[]", "{}"});
    ASSERT_TRUE(first.waitForOutput("convert\n"));
    EXPECT_EQ(first.standardOutput(), "first\nconvert\n");
}

TEST_F(DBusApplicationTests, IsNotTheFirstWhereTheFirstHangs) {
    ChildProcess first({PASTEWISE_START_PROGRAM});
    ASSERT_TRUE(first.waitForOutput("first\n"));
    first.sendSignal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(application_->claim(), Claim::alreadyRunning);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

TEST_F(DBusApplicationTests, IsTheFirstWhereTheOtherEndsInsteadOfAnswering) {
    ChildProcess first({PASTEWISE_START_PROGRAM});
    ASSERT_TRUE(first.waitForOutput("first\n"));
    first.sendSignal(SIGSTOP);
    ChildProcess monitor({"dbus-monitor", "--session", "member='ActivateAction'"});
    ASSERT_TRUE(monitor.waitForOutput("NameLost"));
    ChildProcess second({PASTEWISE_START_PROGRAM});
    ASSERT_TRUE(monitor.waitForOutput("ActivateAction")) << monitor.standardError();
    first.sendSignal(SIGKILL);
    EXPECT_TRUE(second.waitForOutput("\n"));
    EXPECT_EQ(second.standardOutput(), "first\n");
}

TEST_F(DBusApplicationTests, LeavesTheNameToAnotherThatDoesNotKnowTheAction) {
    QDBusConnection other =
        QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "other");
    ASSERT_TRUE(other.registerService("com.app.pastewise"));
    EXPECT_EQ(application_->claim(), Claim::alreadyRunning);
    QDBusConnection::disconnectFromBus("other");
}

TEST_F(DBusApplicationTests, IsTheFirstAgainWhenTheOtherWasKilled) {
    {
        ChildProcess first({PASTEWISE_START_PROGRAM});
        ASSERT_TRUE(first.waitForOutput("first\n"));
    }
    EXPECT_EQ(application_->claim(), Claim::first);
}

TEST_F(DBusApplicationTests, GivesTheNameBackWhenItGoes) {
    ASSERT_EQ(application_->claim(), Claim::first);
    application_.reset();
    EXPECT_THAT(callApplication("Activate", {"{}"}), HasSubstr(serviceUnknown));
}

TEST_F(DBusApplicationTests, KeepsTheNameFromWhoeverWantsToReplaceIt) {
    ASSERT_EQ(application_->claim(), Claim::first);
    ChildProcess thief({"gdbus",
                        "call",
                        "--session",
                        "--dest=org.freedesktop.DBus",
                        "--object-path=/org/freedesktop/DBus",
                        "--method=org.freedesktop.DBus.RequestName",
                        "com.app.pastewise",
                        "6"}); // replace, and do not queue
    ASSERT_EQ(thief.waitForExit(), 0);
    EXPECT_EQ(thief.standardOutput(), "(uint32 3,)\n"); // exists
}

TEST_F(DBusApplicationTests, GoesOnWhenTheBusGoesAway) {
    ChildProcess program({PASTEWISE_START_PROGRAM});
    ASSERT_TRUE(program.waitForOutput("first\n"));
    bus_.kill();
    // The program's event loop still runs what is asked for, and it ends as it is told.
    EXPECT_TRUE(program.waitForOutput("disconnected\n"));
    EXPECT_TRUE(program.isRunning());
    program.sendSignal(SIGTERM);
    EXPECT_EQ(program.waitForExit(), 128 + SIGTERM);
}

TEST_F(DBusApplicationTests, DoesWithoutABusThatIsNotThere) {
    bus_.kill();
    EXPECT_EQ(application_->claim(), Claim::noBus);
    setRequests();
}

TEST_F(DBusApplicationTests, DoesWithoutABusThatHangs) {
    bus_.suspend();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(application_->claim(), Claim::noBus);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
    bus_.resume();
}

TEST_F(DBusApplicationTests, LetsNoSecondInstanceThroughWhileManyStartAtOnce) {
    std::vector<std::unique_ptr<ChildProcess>> starts;
    constexpr int startCount = 8;
    starts.reserve(startCount);
    for (int count = 0; count < startCount; ++count) {
        starts.push_back(
            std::make_unique<ChildProcess>(std::vector<std::string>{PASTEWISE_START_PROGRAM}));
    }
    int firstCount = 0;
    for (const auto& start : starts) {
        EXPECT_TRUE(start->waitForOutput("\n"));
        firstCount += start->standardOutput().starts_with("first\n") ? 1 : 0;
    }
    EXPECT_EQ(firstCount, 1);
}

} // namespace
