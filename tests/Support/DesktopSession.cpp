#include "tests/Support/DesktopSession.h"

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
    bus_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--print-address=1"},
        ChildProcess::Options{.environment = server_.environment()});
    if (!waitUntil([this] { return bus_->standardOutput().find('\n') != std::string::npos; })) {
        throw std::runtime_error("no session bus: " + bus_->standardError());
    }
    busAddress_ = bus_->standardOutput().substr(0, bus_->standardOutput().find('\n'));

    windowManager_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"openbox"}, ChildProcess::Options{.environment = environment()});
    if (!waitUntil([this] { return hasWindowManager(environment()); })) {
        throw std::runtime_error("no window manager: " + windowManager_->standardError());
    }
}

std::map<std::string, std::string> DesktopSession::environment() const {
    auto variables = server_.environment();
    if (!busAddress_.empty()) {
        variables["DBUS_SESSION_BUS_ADDRESS"] = busAddress_;
    }
    return variables;
}

} // namespace testing_support
