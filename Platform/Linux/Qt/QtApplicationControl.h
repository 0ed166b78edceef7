#pragma once

namespace platform {

/// What the program asks of its own running application. Needs a QApplication. Main thread only.
class QtApplicationControl {
  public:
    /// Brings the program's visible windows to the front, whatever program is active.
    static void activateIgnoringOtherApps();

    /// Asks the event loop to end; it does so after this returned.
    static void terminate();
};

} // namespace platform
