#pragma once

#include "Platform/Application.h"

@class PWApplicationDelegate;

namespace platform {

/// The system's application object, made with this one. Main thread only.
class MacApplication final : public Application {
  public:
    MacApplication();

    /// The system does not start a second program of the same bundle. It notifies the first one,
    /// which opens its preferences. Nothing here requests a conversion.
    void setRequests(Requests requests) override;
    void activateIgnoringOtherApps() override;
    /// Ends the process without returning from run().
    void terminate() override;

    /// Runs the event loop; see Platform::run().
    void run(const std::function<void()>& didFinishLaunching);

  private:
    void reopen();

    Requests requests_;
    bool hasWaitingReopen_ = false;
    /// The system refers to its delegate weakly.
    PWApplicationDelegate* const delegate_;
};

} // namespace platform
