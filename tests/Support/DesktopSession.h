#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateXServer.h"

#include <map>
#include <memory>
#include <string>

namespace testing_support {

/// A desktop of the test's own: an X server, a session bus and a window manager, all ready.
class DesktopSession {
  public:
    DesktopSession();

    [[nodiscard]] const std::string& display() const { return server_.display(); }

    /// What programs on this desktop run with: see PrivateXServer, and the session bus.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

    [[nodiscard]] const std::string& busAddress() const { return busAddress_; }

    /// Ends the X server at once, as a crash of it would.
    void killXServer() { server_.kill(); }

    /// Ends the session bus at once.
    void killBus() { bus_.reset(); }

  private:
    PrivateXServer server_;
    std::unique_ptr<ChildProcess> bus_;
    std::string busAddress_;
    std::unique_ptr<ChildProcess> windowManager_;
};

} // namespace testing_support
