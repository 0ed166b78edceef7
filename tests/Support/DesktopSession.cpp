#include "tests/Support/DesktopSession.h"

#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace testing_support {

namespace {

/// Whether a window manager has announced itself on the root window.
bool hasWindowManager(const std::map<std::string, std::string>& environment) {
    ChildProcess query({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"},
                       {.environment = environment});
    return query.waitForExit() == 0 &&
           query.standardOutput().find("window id") != std::string::npos;
}

} // namespace

DesktopSession::DesktopSession() {
    restartBus();
    windowManager_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"openbox"}, ChildProcess::Options{.environment = environment()});
    if (!waitUntil([this] { return hasWindowManager(environment()); })) {
        throw std::runtime_error("no window manager: " + windowManager_->standardError());
    }
}

std::map<std::string, std::string> DesktopSession::environment() const {
    auto variables = server_.environment();
    variables["DBUS_SESSION_BUS_ADDRESS"] = busAddress_;
    return variables;
}

void DesktopSession::suspendBus(bool isSuspended) {
    bus_->sendSignal(isSuspended ? SIGSTOP : SIGCONT);
}

void DesktopSession::restartBus() {
    bus_.reset();
    std::filesystem::remove(busFolder_.path() / "bus");
    bus_ =
        std::make_unique<ChildProcess>(std::vector<std::string>{"dbus-daemon",
                                                                "--session",
                                                                "--nofork",
                                                                "--print-address=1",
                                                                "--address=" + busAddress_},
                                       ChildProcess::Options{.environment = server_.environment()});
    if (!bus_->waitForOutput("unix:path=")) {
        throw std::runtime_error("no session bus: " + bus_->standardError());
    }
}

} // namespace testing_support
