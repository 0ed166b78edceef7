#pragma once

#include "Platform/Permissions.h"
#include "Platform/Time.h"

#include <chrono>
#include <ctime>

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
    [[nodiscard]] DateComponents dateComponents(foundation::Date date) const override {
        // localtime_r need not notice a changed time zone by itself.
        tzset();
        const std::time_t seconds =
            std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
        std::tm local{};
        if (localtime_r(&seconds, &local) == nullptr) {
            return {};
        }
        return {.year = local.tm_year + 1900, .month = local.tm_mon + 1, .day = local.tm_mday};
    }
};

} // namespace platform
