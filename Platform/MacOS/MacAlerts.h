#pragma once

#include "Platform/Alerts.h"
#import "Platform/MacOS/MacConversions.h"

#import <AppKit/AppKit.h>

namespace platform {

/// The system's alerts. Main thread only.
class MacAlerts final : public Alerts {
  public:
    std::optional<std::size_t> runModal(const Alert& alert) override {
        constexpr NSAlertStyle styles[] = {
            NSAlertStyleWarning, NSAlertStyleInformational, NSAlertStyleCritical};
        NSAlert* const nsAlert = [[NSAlert alloc] init];
        nsAlert.messageText = nsString(alert.messageText);
        nsAlert.informativeText = nsString(alert.informativeText);
        nsAlert.alertStyle = styles[static_cast<int>(alert.style)];
        for (const std::string& title : alert.buttonTitles) {
            [nsAlert addButtonWithTitle:nsString(title)];
        }
        // One of a program without a place in the Dock would come up behind everything else.
        [NSApp activateIgnoringOtherApps:YES];
        const NSModalResponse index = [nsAlert runModal] - NSAlertFirstButtonReturn;
        return index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index));
    }
};

} // namespace platform
