#include "tests/Support/PrivateXServer.h"

#include <sys/stat.h>

#include <cstdlib>
#include <stdexcept>

namespace testing_support {

PrivateXServer::PrivateXServer() {
    const std::string runtimeFolder = home_.path() / "runtime";
    mkdir(runtimeFolder.c_str(), S_IRWXU);
    // The display number arrives on standard output, descriptor 1, once the server is ready.
    server_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        "Xvfb", "-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", "1280x800x24"});
    if (!waitUntil([this] {
            return server_->standardOutput().find('\n') != std::string::npos ||
                   !server_->isRunning();
        }) ||
        !server_->isRunning()) {
        throw std::runtime_error("Xvfb does not start: " + server_->standardError());
    }
    const std::string& output = server_->standardOutput();
    display_ = std::string(":").append(output, 0, output.find('\n'));
}

std::map<std::string, std::string> PrivateXServer::environment() const {
    const std::string home = home_.path();
    return {{"DISPLAY", display_},
            {"HOME", home},
            {"XDG_CONFIG_HOME", home + "/config"},
            {"XDG_DATA_HOME", home + "/data"},
            {"XDG_STATE_HOME", home + "/state"},
            {"XDG_CACHE_HOME", home + "/cache"},
            {"XDG_RUNTIME_DIR", home + "/runtime"},
            {"XDG_SESSION_TYPE", "x11"},
            {"XAUTHORITY", ""},
            {"WAYLAND_DISPLAY", ""},
            {"SESSION_MANAGER", ""},
            {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
            {"QT_QPA_PLATFORM", ""},
            {"QT_LOGGING_RULES", ""}};
}

void PrivateXServer::adoptEnvironment() const {
    for (const auto& [name, value] : environment()) {
        if (value.empty()) {
            unsetenv(name.c_str());
        } else {
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
}

} // namespace testing_support
