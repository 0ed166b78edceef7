#pragma once

#include "Foundation/Interface.h"
#include "Pastewise/AppDelegate.h"
#include "Pastewise/AppState.h"
#include "Pastewise/SharedInstances.h"
#include "Platform/Platform.h"

namespace pastewise {

/// The application: assembles the program on a platform, which outlives it. Main thread only.
class PastewiseApp : foundation::Pinned {
  public:
    explicit PastewiseApp(platform::Platform& platform);

    /// Requests from the desktop are ignored from now on.
    ~PastewiseApp();

    /// Runs the program until it is asked to end. Returns its exit code.
    int main();

  private:
    void answerRequests();

    platform::Platform& platform_;
    SharedInstances shared_;
    AppDelegate appDelegate_;
    /// The state for views of the application itself, independent of the delegate's.
    AppState appState_;
};

} // namespace pastewise
