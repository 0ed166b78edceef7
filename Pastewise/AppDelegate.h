#pragma once

#include "Foundation/Logger.h"
#include "Foundation/LoggerFactory.h"
#include "HotKey/HotKey.h"
#include "HotKey/HotKeysController.h"
#include "Pastewise/ClipboardManager.h"

#include <memory>

namespace pastewise {

/// Leads the program: what happens at launch, and what happens each time the shortcut is pressed.
/// Main thread only; everything it is given outlives it.
class AppDelegate {
  public:
    AppDelegate(ClipboardManager& clipboardManager,
                hotkey::HotKeysController& hotKeys,
                const foundation::LoggerFactory& loggers);

    /// Called once, when the event loop is about to run: takes the shortcut.
    void applicationDidFinishLaunching();

    /// Turns the list on the clipboard into a sheet, all within this call. A failure is logged and
    /// leaves the clipboard as it was, except when the system refuses half of what is written.
    void handleShortcutTriggered();

  private:
    void convertClipboard();

    ClipboardManager& clipboardManager_;
    hotkey::HotKeysController& hotKeys_;
    foundation::Logger logger_;
    std::unique_ptr<hotkey::HotKey> shortcut_;
};

} // namespace pastewise
