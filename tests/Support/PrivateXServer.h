#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"

#include <map>
#include <memory>
#include <string>

namespace testing_support {

/// A private, virtual X server, with a private home folder for the programs started on it: the
/// user's clipboard, keys and files are out of reach.
class PrivateXServer {
  public:
    PrivateXServer();

    /// The display name, for example ":42".
    [[nodiscard]] const std::string& display() const { return display_; }

    /// The environment of programs on this server: DISPLAY, HOME and the XDG folders; no Wayland,
    /// and neither the user's session bus nor session manager.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

    /// Sets environment() for the test process itself, for code under test that reads DISPLAY.
    void adoptEnvironment() const;

    /// SIGSTOP makes the server hang until SIGCONT.
    void sendSignal(int signal) const { server_->sendSignal(signal); }

    /// Kills the server.
    void kill() { server_.reset(); }

  private:
    TemporaryFolder home_;
    std::unique_ptr<ChildProcess> server_;
    std::string display_;
};

} // namespace testing_support
