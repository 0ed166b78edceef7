#include "tests/Support/PrivateBus.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace testing_support {

PrivateBus::PrivateBus() {
    const std::filesystem::path configuration = folder_.path() / "bus.conf";
    std::ofstream(configuration) << R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=)" << folder_.path().string()
                                 << R"(</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>)";
    daemon_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        "dbus-daemon", "--config-file=" + configuration.string(), "--nofork", "--print-address=1"});
    if (!waitUntil([this] { return daemon_->standardOutput().find('\n') != std::string::npos; })) {
        throw std::runtime_error("no session bus: " + daemon_->standardError());
    }
    address_ = daemon_->standardOutput().substr(0, daemon_->standardOutput().find('\n'));
}

void PrivateBus::suspend() {
    daemon_->sendSignal(SIGSTOP);
}

void PrivateBus::resume() {
    daemon_->sendSignal(SIGCONT);
}

} // namespace testing_support
