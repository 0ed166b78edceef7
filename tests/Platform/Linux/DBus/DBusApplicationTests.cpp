#include "Platform/Linux/DBus/DBusApplication.h"
#include "Platform/Linux/DBus/SessionBus.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateBus.h"
#include "tests/Support/QtTestLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using platform::DBusApplication;
using platform::SessionBus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::ChildProcess;
using testing_support::PrivateBus;
using testing_support::QtTestLoop;

const QString name = "com.app.pastewise";

/// One instance of the program on a connection of its own.
class Instance {
  public:
    explicit Instance(const PrivateBus& bus)
        : sessionBus_(bus.address(), [this](const QDBusConnection& changed) {
              if (changed.isConnected()) {
                  application.joinBus(changed);
                  uniqueName = changed.baseService();
              }
          }) {}

    void setRequests() {
        application.setRequests(
            {.convert = [this] { requests.emplace_back("convert"); },
             .openPreferences = [this] { requests.emplace_back("preferences"); },
             .retryShortcut = [this] { requests.emplace_back("retry"); }});
    }

    DBusApplication application{[] {},
                                [this](bool isEnabled) {
                                    requests.emplace_back(isEnabled ? "at login" : "not at login");
                                    return reason;
                                }};
    QString reason;     ///< Why the start at login cannot be changed.
    QString uniqueName; ///< Empty until the bus is joined.
    std::vector<std::string> requests;

  private:
    SessionBus sessionBus_;
};

class DBusApplicationTests : public testing::Test {
  protected:
    void TearDown() override { QDBusConnection::disconnectFromBus("observer"); }

    /// The unique name of the owner of the program's name; empty if there is none.
    QString owner() { return observer_.interface()->serviceOwner(name); }

    bool waitForName(const Instance& instance) {
        return QtTestLoop::turnUntil(
            [&] { return !instance.uniqueName.isEmpty() && owner() == instance.uniqueName; });
    }

    /// Standard output and error of a client that calls the method. Turns the event loop until the
    /// client has its reply, and once more for the request, which follows the reply.
    std::string run(const std::vector<std::string>& command) {
        ChildProcess client(command,
                            {.environment = {{"DBUS_SESSION_BUS_ADDRESS", bus_.address()}}});
        QtTestLoop::turnUntil([&] { return !client.isRunning(); });
        QtTestLoop::turn();
        return client.standardOutput() + client.standardError();
    }

    std::string call(const std::string& method, const std::vector<std::string>& arguments) {
        std::vector<std::string> command{"gdbus",
                                         "call",
                                         "--session",
                                         "--timeout=10",
                                         "--dest=com.app.pastewise",
                                         "--object-path=/com/app/pastewise",
                                         "--method=" + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return run(command);
    }

    std::string callApplication(const std::string& method,
                                const std::vector<std::string>& arguments) {
        return call("org.freedesktop.Application." + method, arguments);
    }

    /// Runs the event loop of the program until something ends it.
    static bool endsByItself() {
        QTimer::singleShot(testing_support::patience, qApp, [] { QCoreApplication::exit(1); });
        return QCoreApplication::exec() == 0;
    }

    PrivateBus bus_;
    QtTestLoop loop_;
    QDBusConnection observer_ =
        QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "observer");
};

/// With one instance that has the name.
class RunningApplicationTests : public DBusApplicationTests {
  protected:
    void SetUp() override { ASSERT_TRUE(waitForName(first_)); }

    Instance first_{bus_};
};

TEST_F(RunningApplicationTests, ChangesWhetherItStartsAtLogin) {
    EXPECT_EQ(callApplication("ActivateAction", {"start-at-login", "[]", "{}"}), "()\n");
    EXPECT_EQ(callApplication("ActivateAction", {"no-start-at-login", "[]", "{}"}), "()\n");
    EXPECT_THAT(first_.requests, ElementsAre("at login", "not at login"));
}

TEST_F(RunningApplicationTests, SaysWhyItCannotStartAtLogin) {
    first_.reason = "There is no space left";
    EXPECT_THAT(callApplication("ActivateAction", {"start-at-login", "[]", "{}"}),
                HasSubstr("There is no space left"));
}

TEST_F(RunningApplicationTests, Converts) {
    first_.setRequests();
    EXPECT_EQ(callApplication("ActivateAction", {"convert", "[]", "{}"}), "()\n");
    EXPECT_THAT(first_.requests, ElementsAre("convert"));
}

TEST_F(RunningApplicationTests, OpensPreferences) {
    first_.setRequests();
    EXPECT_EQ(callApplication("ActivateAction", {"preferences", "[<true>]", "{'a': <'b'>}"}),
              "()\n");
    EXPECT_THAT(first_.requests, ElementsAre("preferences"));
}

TEST_F(RunningApplicationTests, CarriesOutRequestsOfTheProgramItselfFromTheEventLoop) {
    first_.setRequests();
    first_.application.carryOutLater(&platform::Application::Requests::retryShortcut);
    EXPECT_THAT(first_.requests, IsEmpty());
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return !first_.requests.empty(); }));
    EXPECT_THAT(first_.requests, ElementsAre("retry"));
}

TEST_F(RunningApplicationTests, Quits) {
    ChildProcess client({"gdbus",
                         "call",
                         "--session",
                         "--dest=com.app.pastewise",
                         "--object-path=/com/app/pastewise",
                         "--method=org.freedesktop.Application.ActivateAction",
                         "quit",
                         "[]",
                         "{}"},
                        {.environment = {{"DBUS_SESSION_BUS_ADDRESS", bus_.address()}}});
    EXPECT_TRUE(endsByItself());
    EXPECT_EQ(client.waitForExit(), 0) << client.standardError();
}

TEST_F(RunningApplicationTests, OpensPreferencesWhenActivatedOrGivenFiles) {
    first_.setRequests();
    EXPECT_EQ(callApplication("Activate", {"{}"}), "()\n");
    EXPECT_THAT(first_.requests, ElementsAre("preferences"));
    EXPECT_EQ(callApplication("Open", {"['file:///tmp/list.txt']", "{}"}), "()\n");
    EXPECT_THAT(first_.requests, ElementsAre("preferences", "preferences"));
}

TEST_F(RunningApplicationTests, AnswersAnUnknownActionWithAnError) {
    first_.setRequests();
    for (const std::string action : {"", "Convert", "exit"}) {
        EXPECT_THAT(callApplication("ActivateAction", {action, "[]", "{}"}),
                    HasSubstr("org.freedesktop.DBus.Error.InvalidArgs"));
    }
    EXPECT_THAT(first_.requests, IsEmpty());
}

TEST_F(RunningApplicationTests, AnswersArgumentsOfTheWrongTypesWithAnError) {
    first_.setRequests();
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
        EXPECT_THAT(run(command), HasSubstr("org.freedesktop.DBus.Error.UnknownMethod"));
    }
    EXPECT_THAT(first_.requests, IsEmpty());
}

TEST_F(RunningApplicationTests, AnswersUnknownMethodsAndInterfacesWithAnError) {
    EXPECT_THAT(callApplication("Close", {}), HasSubstr("org.freedesktop.DBus.Error.Unknown"));
    EXPECT_THAT(call("com.example.Other.Activate", {"{}"}),
                HasSubstr("org.freedesktop.DBus.Error.Unknown"));
}

TEST_F(RunningApplicationTests, DescribesItself) {
    const std::string description = call("org.freedesktop.DBus.Introspectable.Introspect", {});
    for (const std::string part :
         {"org.freedesktop.Application", "Activate", "Open", "ActivateAction", "a{sv}"}) {
        EXPECT_THAT(description, HasSubstr(part));
    }
}

TEST_F(RunningApplicationTests, ServesCallersThatWantNoReply) {
    first_.setRequests();
    QDBusMessage request = QDBusMessage::createMethodCall(
        name, "/com/app/pastewise", "org.freedesktop.Application", "Activate");
    request << QVariantMap();
    EXPECT_TRUE(observer_.send(request));
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return !first_.requests.empty(); }));
    EXPECT_THAT(first_.requests, ElementsAre("preferences"));
}

TEST_F(RunningApplicationTests, KeepsRequestsUntilThereAreHandlers) {
    EXPECT_EQ(callApplication("ActivateAction", {"convert", "[]", "{}"}), "()\n");
    EXPECT_EQ(callApplication("Activate", {"{}"}), "()\n");
    first_.setRequests();
    EXPECT_THAT(first_.requests, IsEmpty());
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return first_.requests.size() >= 2; }));
    EXPECT_THAT(first_.requests, ElementsAre("convert", "preferences"));
    first_.setRequests();
    QtTestLoop::turn();
    EXPECT_EQ(first_.requests.size(), 2U);
}

TEST_F(RunningApplicationTests, RepliesBeforeItCarriesOutTheRequest) {
    bool hadReply = false;
    std::unique_ptr<ChildProcess> client;
    first_.application.setRequests({.convert = [&] { hadReply = client->waitForExit() == 0; },
                                    .openPreferences = {},
                                    .retryShortcut = {}});
    client = std::make_unique<ChildProcess>(
        std::vector<std::string>{"gdbus",
                                 "call",
                                 "--session",
                                 "--dest=com.app.pastewise",
                                 "--object-path=/com/app/pastewise",
                                 "--method=org.freedesktop.Application.ActivateAction",
                                 "convert",
                                 "[]",
                                 "{}"},
        ChildProcess::Options{.environment = {{"DBUS_SESSION_BUS_ADDRESS", bus_.address()}}});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return hadReply; }));
}

TEST_F(RunningApplicationTests, DoesNotLetItsNameBeReplaced) {
    // 6: replace the owner, and do not queue. 3: the name exists.
    EXPECT_EQ(run({"gdbus",
                   "call",
                   "--session",
                   "--dest=org.freedesktop.DBus",
                   "--object-path=/org/freedesktop/DBus",
                   "--method=org.freedesktop.DBus.RequestName",
                   "com.app.pastewise",
                   "6"}),
              "(uint32 3,)\n");
}

TEST_F(RunningApplicationTests, TakesItsNameAgainOnARestartedBus) {
    bus_.kill();
    QDBusConnection::disconnectFromBus("observer");
    first_.uniqueName.clear();
    bus_.start();
    observer_ = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), "observer");
    EXPECT_TRUE(waitForName(first_));
}

TEST_F(RunningApplicationTests, ASecondInstanceHasTheFirstOpenItsPreferencesAndEnds) {
    first_.setRequests();
    const Instance second(bus_);
    EXPECT_TRUE(endsByItself());
    EXPECT_THAT(first_.requests, ElementsAre("preferences"));
    EXPECT_EQ(owner(), first_.uniqueName);
}

TEST_F(RunningApplicationTests, OpensPreferencesForAnotherProcessThatAsks) {
    first_.setRequests();
    std::optional<bool> hasReplied;
    DBusApplication::askOtherInstance(
        observer_, QCoreApplication::instance(), [&](bool result) { hasReplied = result; });
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return hasReplied.has_value(); }));
    EXPECT_EQ(hasReplied, true);
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return !first_.requests.empty(); }));
    EXPECT_THAT(first_.requests, ElementsAre("preferences"));
}

TEST_F(DBusApplicationTests, AskingFailsIfNobodyHasTheName) {
    std::optional<bool> hasReplied;
    DBusApplication::askOtherInstance(
        observer_, QCoreApplication::instance(), [&](bool result) { hasReplied = result; });
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return hasReplied.has_value(); }));
    EXPECT_EQ(hasReplied, false);
}

TEST_F(DBusApplicationTests, AskingFailsIfTheProcessItselfHasTheName) {
    ASSERT_TRUE(observer_.registerService(name));
    std::optional<bool> hasReplied;
    DBusApplication::askOtherInstance(
        observer_, QCoreApplication::instance(), [&](bool result) { hasReplied = result; });
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return hasReplied.has_value(); }));
    EXPECT_EQ(hasReplied, false);
}

TEST_F(DBusApplicationTests, InheritsTheNameFromAnOwnerThatDoesNotKnowTheAction) {
    ASSERT_TRUE(observer_.registerService(name));
    const Instance instance(bus_);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] {
        return observer_.interface()
            ->call("ListQueuedOwners", name)
            .arguments()
            .value(0)
            .toStringList()
            .contains(instance.uniqueName);
    }));
    QtTestLoop::turn();
    EXPECT_EQ(owner(), observer_.baseService());
    ASSERT_TRUE(observer_.unregisterService(name));
    EXPECT_TRUE(waitForName(instance));
}

TEST_F(DBusApplicationTests, ReleasesTheNameAtItsEnd) {
    std::optional<Instance> instance(std::in_place, bus_);
    ASSERT_TRUE(waitForName(*instance));
    instance.reset();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return owner().isEmpty(); }));
}

} // namespace
