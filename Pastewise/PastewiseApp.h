#pragma once

#include "Foundation/Interface.h"
#include "Pastewise/AppDelegate.h"
#include "Pastewise/AppState.h"
#include "Pastewise/Debouncer.h"
#include "Pastewise/SharedInstances.h"
#include "Platform/Platform.h"

namespace pastewise {

/// The application: puts the program together from a platform, which outlives it. Main thread only.
class PastewiseApp : foundation::Pinned {
  public:
    explicit PastewiseApp(platform::Platform& platform);

    /// What the desktop asks for from now on is left undone.
    ~PastewiseApp();

    /// Launches the program and runs it until it is asked to end. Returns its exit code.
    int main();

  private:
    void answerRequests();

    platform::Platform& platform_;
    SharedInstances shared_;
    AppDelegate appDelegate_;
    /// The state that views of the application itself would be bound to. It follows the accounting
    /// on its own, beside the one that the delegate uses.
    AppState appState_;
    Debouncer convertDebouncer_;
};

} // namespace pastewise
