#include "Pastewise/AppDelegate.h"

#include <new>
#include <utility>

namespace pastewise {

AppDelegate::AppDelegate(ClipboardManager& clipboardManager,
                         hotkey::HotKeysController& hotKeys,
                         const foundation::LoggerFactory& loggers)
    : clipboardManager_(clipboardManager),
      hotKeys_(hotKeys),
      logger_(loggers.logger("AppDelegate")) {}

void AppDelegate::applicationDidFinishLaunching() {
    logger_.debug("Application launching with condensed status interface");
    shortcut_ = std::make_unique<hotkey::HotKey>(hotKeys_,
                                                 hotkey::Key::g,
                                                 hotkey::ModifierFlags::command,
                                                 [this] { handleShortcutTriggered(); });
    logger_.debug("Application launched successfully");
}

void AppDelegate::handleShortcutTriggered() {
    logger_.debug("Global shortcut triggered; attempting clipboard conversion");
    try {
        convertClipboard();
    } catch (const std::bad_alloc&) {
        // Nothing has been written yet: writing hands over texts that are already complete.
        logger_.error("Not enough memory to convert the clipboard; it is left as it was");
    }
}

void AppDelegate::convertClipboard() {
    const auto lines = clipboardManager_.readClipboard();
    if (!lines) {
        logger_.error("Clipboard read failed: empty or non-text content");
        return;
    }
    ConversionPayload payload = clipboardManager_.generateHTML(*lines);
    if (!clipboardManager_.writeToClipboard(std::move(payload.html),
                                            std::move(payload.plainText))) {
        logger_.error("Clipboard write failed; unable to update content for Miro");
        return;
    }
    logger_.debug("Clipboard updated with Miro-compatible content; recording analytics");
}

} // namespace pastewise
