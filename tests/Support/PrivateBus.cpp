#include "tests/Support/PrivateBus.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace testing_support {

PrivateBus::PrivateBus() {
    std::ofstream(folder_.path() / "bus.conf") << R"(<busconfig>
  <type>session</type>
  <listen>)" << address_ << R"(</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>)";
    start();
}

void PrivateBus::start() {
    std::filesystem::remove(folder_.path() / "bus");
    daemon_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"dbus-daemon",
                                 "--config-file=" + (folder_.path() / "bus.conf").string(),
                                 "--nofork",
                                 "--print-address=1"});
    if (!daemon_->waitForOutput("unix:path=")) {
        throw std::runtime_error("no session bus: " + daemon_->standardError());
    }
}

void PrivateBus::suspend() {
    daemon_->sendSignal(SIGSTOP);
}

void PrivateBus::resume() {
    daemon_->sendSignal(SIGCONT);
}

} // namespace testing_support
