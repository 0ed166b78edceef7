#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"

#include <map>
#include <memory>
#include <string>

namespace testing_support {

/// An X server of the test's own, without a screen to look at, with a home folder of its own for
/// the programs that are started on it: the user's clipboard, keys and files are out of reach.
class PrivateXServer {
  public:
    PrivateXServer();

    /// The name for xcb_connect and DISPLAY, for example ":42".
    [[nodiscard]] const std::string& display() const { return display_; }

    /// What programs on this server run with: DISPLAY, HOME and the XDG folders, no Wayland, no
    /// session bus and no session manager of the user's.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

    /// Sets environment() for the test process itself, for code under test that reads DISPLAY.
    void adoptEnvironment() const;

    /// SIGSTOP has the server keep still until SIGCONT.
    void sendSignal(int signal) const { server_->sendSignal(signal); }

    /// Ends the server at once, as a crash of it would.
    void kill() { server_.reset(); }

  private:
    TemporaryFolder home_;
    std::unique_ptr<ChildProcess> server_;
    std::string display_;
};

} // namespace testing_support
