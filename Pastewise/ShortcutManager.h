#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/WeakReference.h"
#include "HotKey/HotKey.h"
#include "HotKey/HotKeysController.h"
#include "HotKey/Key.h"
#include "HotKey/ModifierFlags.h"
#include "Platform/UserDefaults.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace pastewise {

/// Posted by ShortcutManager after every change of the shortcut. The object is a text to show:
/// symbols for a shortcut that was set ("⌘ G"), words for the default ("Command G").
inline constexpr std::string_view shortcutChanged = "shortcutChanged";

/// The one global shortcut: registers it with the system, saves the user's choice and calls back on
/// each press.
///
/// There is always a shortcut, Command+G unless the user chose another. If the system refuses a
/// combination, or another program has it, it is saved, announced and shown like any other, and
/// never fires.
///
/// Main thread only. Does not own what it is given. No operation fails; a saved shortcut of the
/// wrong form counts as none.
class ShortcutManager {
  public:
    /// Installs the saved shortcut. If there is none, or it names no key, installs and saves the
    /// default.
    ShortcutManager(hotkey::HotKeysController& hotKeys,
                    platform::UserDefaults& defaults,
                    foundation::NotificationCenter& notificationCenter,
                    const foundation::LoggerFactory& loggers);

    /// Unregisters the old combination, registers the new one and saves it, with every bit of
    /// `modifiers`.
    void setShortcut(hotkey::Key key, hotkey::ModifierFlags modifiers);

    /// Restores the default, which replaces the user's choice in the settings.
    void clearShortcut();

    /// Registers the current combination again, for a system that refused it before.
    void retry();

    /// The saved shortcut in words: "Command + Shift K". The default if there is none.
    [[nodiscard]] static std::string
    currentShortcutDisplayString(const platform::UserDefaults& defaults);

    /// Called on each press of the shortcut, within the system's event. May be empty. It may
    /// replace the shortcut or itself, and may destroy the manager.
    std::function<void()> shortcutHandler;

  private:
    void loadShortcut();
    void setUpDefaultShortcut();
    void callShortcutHandler() const;

    hotkey::HotKeysController& hotKeys_;
    platform::UserDefaults& defaults_;
    foundation::NotificationCenter& notificationCenter_;
    foundation::Logger logger_;
    std::unique_ptr<hotkey::HotKey> hotKey_;
    foundation::WeakReferenceSource<ShortcutManager> self_{this};
};

} // namespace pastewise
