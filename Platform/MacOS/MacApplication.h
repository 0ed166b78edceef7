#pragma once

#include "Platform/Application.h"

namespace platform {

/// The system's application object. Main thread only.
class MacApplication final : public Application {
  public:
    /// The system starts no second program of the same bundle: it tells the first one, which takes
    /// that for a request to open the preferences. Nothing here asks for a conversion.
    void setRequests(Requests requests) override;
    void activateIgnoringOtherApps() override;
    /// Ends the process without a return from run().
    void terminate() override;

    /// Runs the event loop; see Platform::run().
    void run(const std::function<void()>& didFinishLaunching);

  private:
    void reopen();

    Requests requests_;
    bool hasWaitingReopen_ = false;
};

} // namespace platform
