#pragma once

#include "Platform/Permissions.h"
#include "Platform/Time.h"

namespace platform {

/// Linux desktops have no such permission, so every process is trusted. Main thread only.
class LinuxAccessibilityTrust final : public AccessibilityTrust {
  public:
    [[nodiscard]] bool isProcessTrusted() const override { return true; }

    bool isProcessTrustedWithPrompt() override { return true; }
};

/// The Gregorian calendar in the time zone of TZ or else /etc/localtime, which is read again for
/// each date. All components are nullopt if the C library cannot tell the day. Main thread only.
class LocalCalendar final : public Calendar {
  public:
    [[nodiscard]] DateComponents dateComponents(foundation::Date date) const override;
};

} // namespace platform
