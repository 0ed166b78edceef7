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

/// The name of what ShortcutManager posts after every change of the shortcut. The object is a text
/// to show: glyphs for a shortcut that was set ("⌘ G"), words for the default ("Command G").
inline constexpr std::string_view shortcutChanged = "shortcutChanged";

/// The one global shortcut: takes it from the system, keeps the user's choice in the settings, and
/// calls back on each press.
///
/// There always is a shortcut, Command+G unless the user chose another. When the system refuses a
/// combination, or another program has it, nobody is told: it is kept, announced and shown like any
/// other, and never fires.
///
/// Main thread only. Everything that it is given outlives it. No operation fails; what the settings
/// hold in a wrong form counts as no choice.
class ShortcutManager {
  public:
    /// Installs the shortcut of the settings. Without one, or when it names no key, installs the
    /// default and stores that.
    ShortcutManager(hotkey::HotKeysController& hotKeys,
                    platform::UserDefaults& defaults,
                    foundation::NotificationCenter& notificationCenter,
                    const foundation::LoggerFactory& loggers);

    /// Gives the old combination back, takes the new one and stores it, with every bit of
    /// `modifiers`.
    void setShortcut(hotkey::Key key, hotkey::ModifierFlags modifiers);

    /// Goes back to the default, which is stored in place of the user's choice.
    void clearShortcut();

    /// The shortcut that the settings hold, in words: "Command + Shift K". The default's where they
    /// hold none.
    [[nodiscard]] static std::string
    currentShortcutDisplayString(const platform::UserDefaults& defaults);

    /// Called on each press of the shortcut, inside the system's event. May be empty. It may do
    /// anything to the manager, replacing or clearing the shortcut, replacing the handler and
    /// destroying the manager included.
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
