#pragma once

#include "Platform/Application.h"
#include "Platform/Permissions.h"

namespace pastewise {

/// Guides the user to the system's setting that lets the program control the computer. Has no
/// state. Main thread only.
class PermissionsManager {
  public:
    /// Has the system ask, then asks with the program's own alert, and opens the setting if the
    /// user wants it. Returns when the alert was answered, whatever the answer; what goes wrong
    /// goes wrong silently.
    static void requestAccessibilityPermissions(platform::StandardOutput& standardOutput,
                                                platform::AccessibilityTrust& accessibilityTrust,
                                                platform::Alerts& alerts,
                                                platform::Workspace& workspace);
};

} // namespace pastewise
