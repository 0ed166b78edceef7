#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/WeakReference.h"
#include "Pastewise/AnalyticsManager.h"
#include "Pastewise/AppState.h"
#include "Pastewise/Debouncer.h"
#include "Pastewise/PreferencesWindowController.h"
#include "Pastewise/SharedInstances.h"
#include "Platform/Images.h"
#include "Platform/MainQueue.h"
#include "Platform/Menu.h"
#include "Platform/Platform.h"
#include "Platform/StatusBar.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace pastewise {

/// Runs the launch sequence, the status item with its menu and icons, and the conversion each time
/// the shortcut is pressed. Main thread only; does not own what it is given.
class AppDelegate final : public platform::MenuDelegate {
  public:
    AppDelegate(platform::Platform& platform, SharedInstances& shared);
    ~AppDelegate() override;

    /// Called once, when the event loop starts.
    void applicationDidFinishLaunching();

    /// Converts the list on the clipboard to a sheet, all within this call. A failure is logged and
    /// leaves the clipboard unchanged, unless the system refuses one of the two texts.
    void handleShortcutTriggered();

    /// The same for a conversion that the desktop requests, which is credited as manual. Requests
    /// that follow each other as fast as a held key repeats are one.
    void handleConversionRequested();

    void menuWillOpen(platform::Menu& menu) override;

    /// The actions of the menu's rows.
    void clearSavedTime();
    void openPreferencesAction();
    void openPreferences();
    void quitApp();

  private:
    static constexpr platform::Size iconSize{18.0, 18.0};
    static constexpr std::chrono::milliseconds flashTime{900};
    /// Longer than the 660 ms after which a held key starts to repeat. A desktop repeats its
    /// shortcut with the key and does not report the key's release.
    static constexpr std::chrono::milliseconds repeatSilence{750};

    void launchApplication();
    void registerObservers();
    void convertClipboard(ConversionSource source);

    void setupStatusBar();
    [[nodiscard]] std::shared_ptr<platform::Menu> makeStatusMenu();
    void refreshMenuContent();
    void showPreferences();
    void terminateApplication();

    /// A row's action, which does nothing once the delegate is gone.
    [[nodiscard]] platform::Action action(std::string name, void (AppDelegate::*method)());
    [[nodiscard]] std::string formattedTimeSaved() const;
    [[nodiscard]] std::string shortcutDisplayString() const;

    [[nodiscard]] std::shared_ptr<platform::Image> makeBaseStatusIcon();
    [[nodiscard]] std::shared_ptr<platform::Image> loadCheckmarkStatusIcon();
    [[nodiscard]] std::shared_ptr<platform::Image> makeGlyphIcon(std::string_view text);
    void flashCheckmarkIcon();
    void restoreBaseStatusIcon(platform::StatusBarButton& button);

    platform::Platform& platform_;
    SharedInstances& shared_;
    std::unique_ptr<PreferencesWindowController> preferencesWindowController_;
    std::shared_ptr<platform::Menu> menu_;
    std::unique_ptr<platform::StatusItem> statusItem_;
    std::shared_ptr<platform::MenuItem> shortcutDisplayItem_;
    std::shared_ptr<platform::MenuItem> timeSavedDisplayItem_;
    AppState& appState_;
    std::shared_ptr<platform::Image> baseStatusIcon_;
    std::shared_ptr<platform::Image> checkmarkStatusIcon_;
    std::shared_ptr<platform::WorkItem> iconFlashWorkItem_;
    foundation::Logger logger_;
    AnalyticsManager& analytics_;
    Debouncer requestDebouncer_;
    foundation::WeakReferenceSource<AppDelegate> self_{this};
};

} // namespace pastewise
