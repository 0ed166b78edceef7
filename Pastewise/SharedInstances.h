#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/Threads.h"
#include "HotKey/HotKeysController.h"
#include "Pastewise/AnalyticsManager.h"
#include "Pastewise/AppState.h"
#include "Pastewise/ClipboardManager.h"
#include "Pastewise/ShortcutManager.h"
#include "Platform/Platform.h"

namespace pastewise {

/// The instances of which the process has one, each made on first use, when it logs and loads what
/// its construction logs and loads. They are destroyed with this object, dependent ones first. The
/// platform outlives it.
class SharedInstances {
  public:
    explicit SharedInstances(platform::Platform& platform);

    [[nodiscard]] const foundation::LoggerFactory& loggers() const { return loggers_; }

    [[nodiscard]] foundation::NotificationCenter& notificationCenter() {
        return notificationCenter_;
    }

    [[nodiscard]] ClipboardManager& clipboardManager() { return clipboardManager_.shared(); }

    [[nodiscard]] AnalyticsManager& analyticsManager() { return analyticsManager_.shared(); }

    [[nodiscard]] AnalyticsStateBridge& analyticsStateBridge() {
        return analyticsStateBridge_.shared();
    }

    [[nodiscard]] ShortcutManager& shortcutManager() { return shortcutManager_.shared(); }

  private:
    foundation::LoggerFactory loggers_;
    foundation::NotificationCenter notificationCenter_;
    foundation::OnceOnly<ClipboardManager> clipboardManager_;
    foundation::OnceOnly<AnalyticsManager> analyticsManager_;
    foundation::OnceOnly<AnalyticsStateBridge> analyticsStateBridge_;
    foundation::OnceOnly<hotkey::HotKeysController> hotKeysController_;
    foundation::OnceOnly<ShortcutManager> shortcutManager_;
};

} // namespace pastewise
