#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateXServer.h"
#include "tests/Support/TemporaryFolder.h"

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

    /// Stops the session bus from answering until the next call with false.
    void suspendBus(bool isSuspended);

    /// Kills the session bus, if it is running, and starts another one at the same address.
    void restartBus();

    /// Kills the X server.
    void killXServer() { server_.kill(); }

    /// Kills the session bus.
    void killBus() { bus_.reset(); }

  private:
    PrivateXServer server_;
    TemporaryFolder busFolder_;
    const std::string busAddress_ = "unix:path=" + (busFolder_.path() / "bus").string();
    std::unique_ptr<ChildProcess> bus_;
    std::unique_ptr<ChildProcess> windowManager_;
};

} // namespace testing_support
