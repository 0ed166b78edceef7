#pragma once

#include "Platform/Application.h"
#include "Platform/Permissions.h"

namespace pastewise {

/// Guides the user to the system setting that lets the program control the computer. Main thread
/// only.
class PermissionsManager {
  public:
    /// Shows the system's prompt, then the program's own alert, and opens the setting if the user
    /// chooses to. Returns once the alert has been answered; failures are silent.
    static void requestAccessibilityPermissions(platform::StandardOutput& standardOutput,
                                                platform::AccessibilityTrust& accessibilityTrust,
                                                platform::Alerts& alerts,
                                                platform::Workspace& workspace);
};

} // namespace pastewise
