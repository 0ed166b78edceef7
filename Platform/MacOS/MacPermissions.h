#pragma once

#import "Platform/MacOS/MacConversions.h"
#include "Platform/Permissions.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>

namespace platform {

/// The system's accessibility service. Main thread only.
class MacAccessibilityTrust final : public AccessibilityTrust {
  public:
    [[nodiscard]] bool isProcessTrusted() const override { return AXIsProcessTrusted(); }

    bool isProcessTrustedWithPrompt() override {
        NSDictionary* const options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
        return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }
};

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
        // The alert of a program without a Dock icon would open behind everything else, and the
        // system may refuse to activate the program.
        NSWindow* const window = nsAlert.window;
        window.level = NSFloatingWindowLevel;
        [NSApp activateIgnoringOtherApps:YES];
        const NSModalResponse index = [nsAlert runModal] - NSAlertFirstButtonReturn;
        return index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index));
    }
};

/// The system's workspace. Main thread only.
class MacWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override {
        NSURL* const nsUrl = [NSURL URLWithString:nsString(url)];
        return nsUrl != nil && [[NSWorkspace sharedWorkspace] openURL:nsUrl];
    }
};

} // namespace platform
