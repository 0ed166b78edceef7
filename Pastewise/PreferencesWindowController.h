#pragma once

#include "Foundation/Interface.h"
#include "Platform/KeyDownMonitors.h"
#include "Platform/MainQueue.h"
#include "Platform/UserDefaults.h"
#include "Platform/Views.h"

#include <memory>

namespace pastewise {

class PreferencesViewController;
class ShortcutManager;

/// The preferences window: small, of a fixed size, hidden until it is asked for and again when it
/// is closed. Main thread only; what it is given outlives it.
class PreferencesWindowController : foundation::Pinned {
  public:
    PreferencesWindowController(platform::Toolkit& toolkit,
                                platform::KeyDownMonitors& keyDownMonitors,
                                platform::MainQueue& mainQueue,
                                platform::UserDefaults& userDefaults,
                                ShortcutManager& shortcutManager);
    ~PreferencesWindowController();

    /// The window is always made by code: making it from an archive is a fatal error.
    [[noreturn]] static void initWithCoder();

    /// Shows the window in front of the program's others and gives it the keyboard.
    void showWindow();

  private:
    [[nodiscard]] PreferencesViewController& preferencesViewController();

    platform::Toolkit& toolkit_;
    platform::KeyDownMonitors& keyDownMonitors_;
    platform::MainQueue& mainQueue_;
    platform::UserDefaults& userDefaults_;
    ShortcutManager& shortcutManager_;

    /// Made on first use. Outlives the window that shows it.
    std::unique_ptr<PreferencesViewController> preferencesViewController_;
    std::unique_ptr<platform::Window> window_;
};

} // namespace pastewise
