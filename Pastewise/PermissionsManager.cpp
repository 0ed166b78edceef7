#include "Pastewise/PermissionsManager.h"

namespace pastewise {

void PermissionsManager::requestAccessibilityPermissions(
    platform::StandardOutput& standardOutput,
    platform::AccessibilityTrust& accessibilityTrust,
    platform::Alerts& alerts,
    platform::Workspace& workspace) {
    standardOutput.writeLine("Requesting accessibility permissions...");
    // The system's prompt may go unseen, so the program's own alert always follows.
    static_cast<void>(accessibilityTrust.isProcessTrustedWithPrompt());

    constexpr std::size_t openSystemPreferences = 0;
    const auto choice = alerts.runModal({
        .messageText = "Accessibility Permissions Required",
        .informativeText = "Please enable Accessibility permissions in System Preferences > "
                           "Security & Privacy > Privacy > Accessibility",
        .style = platform::AlertStyle::warning,
        .buttonTitles = {"Open System Preferences", "Cancel"},
    });
    if (choice == openSystemPreferences) {
        workspace.openURL(
            "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    }
}

} // namespace pastewise
