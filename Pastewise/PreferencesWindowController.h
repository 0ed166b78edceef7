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

/// The preferences window: of a fixed size, hidden until it is shown and again once it is closed.
/// Main thread only; does not own what it is given.
class PreferencesWindowController : foundation::Pinned {
  public:
    PreferencesWindowController(platform::Toolkit& toolkit,
                                platform::KeyDownMonitors& keyDownMonitors,
                                platform::MainQueue& mainQueue,
                                platform::UserDefaults& userDefaults,
                                ShortcutManager& shortcutManager);
    ~PreferencesWindowController();

    /// The window cannot be made from an archive: a fatal error.
    [[noreturn]] static void initWithCoder();

    /// Shows the window in front of the program's others, with the keyboard focus.
    void showWindow();

  private:
    [[nodiscard]] PreferencesViewController& preferencesViewController();

    platform::Toolkit& toolkit_;
    platform::KeyDownMonitors& keyDownMonitors_;
    platform::MainQueue& mainQueue_;
    platform::UserDefaults& userDefaults_;
    ShortcutManager& shortcutManager_;

    /// Made on first use; outlives the window.
    std::unique_ptr<PreferencesViewController> preferencesViewController_;
    std::unique_ptr<platform::Window> window_;
};

} // namespace pastewise
