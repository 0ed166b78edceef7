#include "Platform/Linux/DBus/DBusApplication.h"
#include "Platform/Linux/DBus/SessionBus.h"
#include "Platform/Linux/Qt/QtWindow.h"
#include "tests/Contract/ApplicationContract.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/PrivateBus.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/WaitUntil.h"

#include <QTimer>
#include <QWidget>
#include <chrono>
#include <optional>

namespace contract {

namespace {

using testing_support::ChildProcess;
using testing_support::QtTestLoop;

class DBusApplicationBackend final : public ApplicationBackend {
  public:
    DBusApplicationBackend() {
        EXPECT_TRUE(QtTestLoop::turnUntil([this] { return hasJoined_; }));
    }

    platform::Application& application() override { return application_; }

    void ask(Request request) override {
        const bool isConversion = request == &platform::Application::Requests::convert;
        ChildProcess client({"gdbus",
                             "call",
                             "--session",
                             "--dest=com.app.pastewise",
                             "--object-path=/com/app/pastewise",
                             "--method=org.freedesktop.Application.ActivateAction",
                             isConversion ? "convert" : "preferences",
                             "[]",
                             "{}"});
        QtTestLoop::turnUntil([&] { return !client.isRunning(); });
        QtTestLoop::turn(); // The program replies before it carries out the request.
        EXPECT_EQ(client.standardOutput(), "()\n") << client.standardError();
    }

    void settle() override { QtTestLoop::turn(); }

    void leaveTheFront() override {
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(desktop_.waitForFocus(window_));
        other_.emplace(std::vector<std::string>{"xev"},
                       ChildProcess::Options{.environment = desktop_.session().environment()});
        EXPECT_TRUE(QtTestLoop::turnUntil([&] { return !window_.isActiveWindow(); }));
    }

    [[nodiscard]] bool comesToTheFront() override { return desktop_.waitForFocus(window_); }

    bool endsAfter(const std::function<void()>& action) override {
        QTimer::singleShot(0, qApp, action);
        QTimer::singleShot(testing_support::patience, qApp, [] { QApplication::exit(1); });
        return QApplication::exec() == 0;
    }

  private:
    testing_support::QtDesktop desktop_;
    testing_support::PrivateBus bus_;
    testing_support::EnvironmentVariable address_{"DBUS_SESSION_BUS_ADDRESS",
                                                  bus_.address().c_str()};
    platform::DBusApplication application_{platform::bringAllToFront, {}};
    bool hasJoined_ = false;
    platform::SessionBus sessionBus_{bus_.address(), [this](const auto& bus) {
                                         application_.joinBus(bus);
                                         hasJoined_ = true;
                                     }};
    QWidget window_;
    std::optional<ChildProcess> other_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         ApplicationContract,
                         (backend<ApplicationBackend, DBusApplicationBackend>("DBus")),
                         nameOfBackend<ApplicationBackend>);

} // namespace contract
