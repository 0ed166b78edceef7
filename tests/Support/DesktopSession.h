#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateXServer.h"

#include <map>
#include <memory>
#include <string>

namespace testing_support {

/// A private desktop: an X server, a session bus and a window manager, all ready.
class DesktopSession {
  public:
    DesktopSession();

    [[nodiscard]] const std::string& display() const { return server_.display(); }

    /// The environment of programs on this desktop: PrivateXServer's, and the session bus.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

    [[nodiscard]] const std::string& busAddress() const { return busAddress_; }

    /// Kills the X server.
    void killXServer() { server_.kill(); }

    /// Kills the session bus.
    void killBus() { bus_.reset(); }

  private:
    PrivateXServer server_;
    std::unique_ptr<ChildProcess> bus_;
    std::string busAddress_;
    std::unique_ptr<ChildProcess> windowManager_;
};

} // namespace testing_support
