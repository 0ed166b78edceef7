#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace testing_support {

/// A session bus of the test's own, which starts no services.
class PrivateBus {
  public:
    PrivateBus();

    [[nodiscard]] const std::string& address() const { return address_; }

    /// Ends the bus at once, as a crash of it would.
    void kill() { daemon_.reset(); }

    /// Has the bus accept connections but do nothing more.
    void suspend();

    void resume();

  private:
    TemporaryFolder folder_;
    std::unique_ptr<ChildProcess> daemon_;
    std::string address_;
};

} // namespace testing_support
