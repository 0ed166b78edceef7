#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace testing_support {

/// A private session bus that starts no services.
class PrivateBus {
  public:
    PrivateBus();

    [[nodiscard]] const std::string& address() const { return address_; }

    /// Starts the bus again at the same address.
    void start();

    /// Kills the bus.
    void kill() { daemon_.reset(); }

    /// Makes the bus hang: it accepts connections and does nothing else.
    void suspend();

    void resume();

  private:
    TemporaryFolder folder_;
    const std::string address_ = "unix:path=" + (folder_.path() / "bus").string();
    std::unique_ptr<ChildProcess> daemon_;
};

} // namespace testing_support
