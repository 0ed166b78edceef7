#include "Pastewise/AppDelegate.h"

#include "Pastewise/PermissionsManager.h"

#include <array>
#include <new>
#include <span>
#include <utility>

namespace pastewise {

using foundation::Notification;
using platform::Image;
using platform::KeyEquivalent;
using platform::Menu;
using platform::MenuItem;

namespace {

constexpr std::string_view timeSavedPrefix = "Time Saved: ";
constexpr std::string_view shortcutPrefix = "Shortcut: ";

std::string joined(std::string_view prefix, const std::string& text) {
    return std::string(prefix) + text;
}

/// The first of the symbols that the system has, as a template image; a null image if it has none.
struct FoundSymbol {
    std::shared_ptr<Image> image;
    std::string_view name;
};

FoundSymbol findSymbol(platform::Images& images,
                       std::span<const std::string_view> names,
                       std::string_view accessibilityDescription) {
    for (const std::string_view name : names) {
        if (auto image = images.systemSymbol(name, accessibilityDescription)) {
            image->setTemplate(true);
            return {std::move(image), name};
        }
    }
    return {};
}

} // namespace

AppDelegate::AppDelegate(platform::Platform& platform, SharedInstances& shared)
    : platform_(platform),
      shared_(shared),
      appState_(shared.analyticsStateBridge().appState),
      logger_(shared.loggers().logger("AppDelegate")),
      analytics_(shared.analyticsManager()),
      requestDebouncer_(platform.mainQueue(), repeatSilence) {}

AppDelegate::~AppDelegate() {
    if (menu_) {
        menu_->setDelegate(nullptr);
    }
}

void AppDelegate::applicationDidFinishLaunching() {
    launchApplication();
}

void AppDelegate::launchApplication() {
    logger_.debug("Application launching with condensed status interface");
    platform_.standardOutput().writeLine("Checking accessibility permissions...");
    if (!platform_.accessibilityTrust().isProcessTrusted()) {
        PermissionsManager::requestAccessibilityPermissions(platform_.standardOutput(),
                                                            platform_.accessibilityTrust(),
                                                            platform_.alerts(),
                                                            platform_.workspace());
    }
    setupStatusBar();
    shared_.shortcutManager().shortcutHandler = [self = self_.reference()] {
        if (AppDelegate* delegate = self.get()) {
            delegate->handleShortcutTriggered();
        }
    };
    logger_.debug("Shortcut handler registered - default shortcut handled by ShortcutManager");
    registerObservers();
    logger_.debug("Ensuring persistent data is loaded from storage");
    appState_.refreshFromStorage();
    logger_.debug("Application launched successfully");
}

void AppDelegate::registerObservers() {
    foundation::NotificationCenter& center = shared_.notificationCenter();
    const auto self = self_.reference();
    center.addObserver(analyticsSavingsApplied, [self](const Notification& notification) {
        if (const AppDelegate* delegate = self.get()) {
            const double* seconds =
                notification.object ? std::get_if<double>(&*notification.object) : nullptr;
            delegate->logger_.debug(
                "Received analytics update; last interaction saved %{public}f seconds",
                seconds != nullptr ? *seconds : 0.0);
        }
    });
    center.addObserver(analyticsSavingsApplied, [self](const Notification&) {
        if (const AppDelegate* delegate = self.get()) {
            const std::string timeSaved = delegate->formattedTimeSaved();
            if (delegate->timeSavedDisplayItem_) {
                delegate->timeSavedDisplayItem_->setTitle(joined(timeSavedPrefix, timeSaved));
            }
            delegate->logger_.debug("Updated time saved display to: %{public}s", timeSaved);
        }
    });
    center.addObserver(shortcutChanged, [self](const Notification&) {
        if (const AppDelegate* delegate = self.get()) {
            const std::string shortcut = delegate->shortcutDisplayString();
            if (delegate->shortcutDisplayItem_) {
                delegate->shortcutDisplayItem_->setTitle(joined(shortcutPrefix, shortcut));
            }
            delegate->logger_.debug("Updated shortcut display row to: %{public}s", shortcut);
        }
    });
}

void AppDelegate::handleShortcutTriggered() {
    logger_.debug("Global shortcut triggered; attempting clipboard conversion");
    convertClipboard(ConversionSource::hotkey);
}

void AppDelegate::handleConversionRequested() {
    if (!requestDebouncer_.accepts()) {
        logger_.debug("Repeated conversion request dropped");
        return;
    }
    logger_.debug("Conversion requested; attempting clipboard conversion");
    convertClipboard(ConversionSource::manual);
}

void AppDelegate::convertClipboard(ConversionSource source) try {
    ClipboardManager& clipboard = shared_.clipboardManager();
    const auto lines = clipboard.readClipboard();
    if (!lines) {
        logger_.error("Clipboard read failed: empty or non-text content");
        return;
    }
    ConversionPayload payload = clipboard.generateHTML(*lines);
    const std::int64_t stickyCount = payload.stickyCount;
    if (!clipboard.writeToClipboard(std::move(payload.html), std::move(payload.plainText))) {
        logger_.error("Clipboard write failed; unable to update content for Miro");
        return;
    }
    logger_.debug("Clipboard updated with Miro-compatible content; recording analytics");
    flashCheckmarkIcon();
    analytics_.recordConversion(stickyCount, source);

} catch (const std::bad_alloc&) {

    // The clipboard is intact: it is written only once both texts are complete.
    logger_.error("Not enough memory to go on with the conversion");
}

// --- The status item and its menu

void AppDelegate::setupStatusBar() {
    statusItem_ = platform_.statusBar().makeStatusItem(platform::StatusBar::variableLength);
    const auto button = statusItem_->button();
    if (!button) {
        logger_.error("Failed to create status bar button");
        return;
    }
    baseStatusIcon_ = makeBaseStatusIcon();
    if (baseStatusIcon_) {
        baseStatusIcon_->setSize(iconSize);
    }
    button->setImage(baseStatusIcon_);
    button->setImagePosition(platform::StatusBarButton::ImagePosition::imageOnly);
    button->setTitle("");
    button->setAction({});
    menu_ = makeStatusMenu();
    menu_->setDelegate(this);
    statusItem_->setMenu(menu_);
    logger_.debug("Status bar configured to show icon only with dropdown menu");
}

std::shared_ptr<Menu> AppDelegate::makeStatusMenu() {
    auto menu = std::make_shared<Menu>();
    timeSavedDisplayItem_ =
        std::make_shared<MenuItem>(joined(timeSavedPrefix, formattedTimeSaved()));
    menu->addItem(timeSavedDisplayItem_);
    menu->addItem(std::make_shared<MenuItem>(
        "Clear Saved Time…", action("clearSavedTime", &AppDelegate::clearSavedTime)));
    menu->addItem(std::make_shared<MenuItem>(
        "Preferences…",
        action("openPreferencesAction", &AppDelegate::openPreferencesAction),
        KeyEquivalent{.key = ","}));
    shortcutDisplayItem_ =
        std::make_shared<MenuItem>(joined(shortcutPrefix, shortcutDisplayString()));
    menu->addItem(shortcutDisplayItem_);
    menu->addItem(MenuItem::separator());
    menu->addItem(std::make_shared<MenuItem>(
        "Quit",
        action("quitApp", &AppDelegate::quitApp),
        KeyEquivalent{.key = "q", .modifierMask = hotkey::ModifierFlags::command}));
    return menu;
}

platform::Action AppDelegate::action(std::string name, void (AppDelegate::*method)()) {
    return {.name = std::move(name), .perform = [self = self_.reference(), method] {
                if (AppDelegate* delegate = self.get()) {
                    (delegate->*method)();
                }
            }};
}

std::string AppDelegate::formattedTimeSaved() const {
    return AnalyticsManager::formatDuration(appState_.todaySavedSeconds());
}

std::string AppDelegate::shortcutDisplayString() const {
    return ShortcutManager::currentShortcutDisplayString(platform_.userDefaults());
}

void AppDelegate::menuWillOpen(Menu& /*menu*/) {
    logger_.debug("Menu about to open; refreshing content to prevent caching");
    refreshMenuContent();
}

void AppDelegate::refreshMenuContent() {
    const std::string timeSaved = formattedTimeSaved();
    if (timeSavedDisplayItem_) {
        timeSavedDisplayItem_->setTitle(joined(timeSavedPrefix, timeSaved));
    }
    const std::string shortcut = shortcutDisplayString();
    if (shortcutDisplayItem_) {
        shortcutDisplayItem_->setTitle(joined(shortcutPrefix, shortcut));
    }
}

void AppDelegate::clearSavedTime() {
    logger_.debug("Clear Saved Time menu item selected; resetting analytics");
    appState_.resetStats();
}

void AppDelegate::openPreferencesAction() {
    openPreferences();
}

void AppDelegate::openPreferences() {
    showPreferences();
}

void AppDelegate::showPreferences() {
    if (!preferencesWindowController_) {
        logger_.debug("Instantiating PreferencesWindowController");
        preferencesWindowController_ =
            std::make_unique<PreferencesWindowController>(platform_.toolkit(),
                                                          platform_.keyDownMonitors(),
                                                          platform_.mainQueue(),
                                                          platform_.userDefaults(),
                                                          shared_.shortcutManager());
    }
    preferencesWindowController_->showWindow();
    platform_.application().activateIgnoringOtherApps();
    appState_.setIsPreferencesWindowShown(true);
}

void AppDelegate::quitApp() {
    terminateApplication();
}

void AppDelegate::terminateApplication() {
    logger_.debug("Quit menu item selected; terminating application");
    platform_.application().terminate();
}

// --- The icons

std::shared_ptr<Image> AppDelegate::makeBaseStatusIcon() {
    static constexpr std::array<std::string_view, 3> names{"p.square", "p.circle", "doc.plaintext"};
    const FoundSymbol symbol = findSymbol(platform_.images(), names, "Pastewise");
    if (symbol.image) {
        logger_.debug("Using SF Symbol for base status icon: %{public}s", symbol.name);
        return symbol.image;
    }
    logger_.debug("Falling back to drawn glyph for base status icon");
    return makeGlyphIcon("P");
}

std::shared_ptr<Image> AppDelegate::loadCheckmarkStatusIcon() {
    if (checkmarkStatusIcon_) {
        return checkmarkStatusIcon_;
    }
    static constexpr std::array<std::string_view, 3> names{
        "checkmark.circle.fill", "checkmark.circle", "checkmark"};
    const FoundSymbol symbol = findSymbol(platform_.images(), names, "Conversion Complete");
    if (symbol.image) {
        symbol.image->setSize(iconSize);
        logger_.debug("Using SF Symbol for checkmark flash: %{public}s", symbol.name);
        checkmarkStatusIcon_ = symbol.image;
    } else {
        logger_.debug("Falling back to drawn glyph for checkmark flash");
        checkmarkStatusIcon_ = makeGlyphIcon("✓");
        checkmarkStatusIcon_->setSize(iconSize);
    }
    return checkmarkStatusIcon_;
}

std::shared_ptr<Image> AppDelegate::makeGlyphIcon(std::string_view text) {
    const auto draw = [text = std::string(text)](platform::Canvas& canvas) {
        using Color = platform::Canvas::Color;
        constexpr platform::SystemFont font{13.0, platform::FontWeight::bold};
        canvas.fill({{0, 0}, iconSize}, Color::clear);
        const platform::Size textSize = canvas.measure(text, font);
        // A capital has no descender: half a point below the middle it looks centred.
        canvas.drawText(text,
                        {(iconSize.width - textSize.width) * 0.5,
                         (iconSize.height - textSize.height) * 0.5 - 0.5},
                        font,
                        Color::white);
    };
    auto image = platform_.images().draw(iconSize, draw);
    image->setTemplate(true);
    return image;
}

void AppDelegate::flashCheckmarkIcon() {
    if (!appState_.shouldFlashSavings()) {
        logger_.debug("Icon flash disabled by user preference; skipping");
        return;
    }
    const auto button = statusItem_ ? statusItem_->button() : nullptr;
    if (!button) {
        return;
    }
    if (iconFlashWorkItem_) {
        iconFlashWorkItem_->cancel();
    }
    button->setImage(loadCheckmarkStatusIcon());
    logger_.debug("Flashing checkmark icon in menu bar");
    iconFlashWorkItem_ = std::make_shared<platform::WorkItem>([self = self_.reference(), button] {
        if (AppDelegate* delegate = self.get()) {
            delegate->restoreBaseStatusIcon(*button);
        }
    });
    platform_.mainQueue().asyncAfter(flashTime, iconFlashWorkItem_);
}

void AppDelegate::restoreBaseStatusIcon(platform::StatusBarButton& button) {
    if (!baseStatusIcon_) {
        return;
    }
    logger_.debug("Restoring base status icon after flash");
    button.setImage(baseStatusIcon_);
}

} // namespace pastewise
