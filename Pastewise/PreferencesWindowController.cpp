#include "Pastewise/PreferencesWindowController.h"

#include "Foundation/FatalError.h"
#include "Pastewise/PreferencesViewController.h"

namespace pastewise {

PreferencesWindowController::PreferencesWindowController(platform::Toolkit& toolkit,
                                                         platform::KeyDownMonitors& keyDownMonitors,
                                                         platform::MainQueue& mainQueue,
                                                         platform::UserDefaults& userDefaults,
                                                         ShortcutManager& shortcutManager)
    : toolkit_(toolkit),
      keyDownMonitors_(keyDownMonitors),
      mainQueue_(mainQueue),
      userDefaults_(userDefaults),
      shortcutManager_(shortcutManager),
      window_(toolkit.makeWindow({{0, 0}, {400, 350}},
                                 {.isTitled = true, .isClosable = true},
                                 {.isBuffered = true, .isDeferred = false})) {
    window_->setTitle("Pastewise Preferences");
    window_->center();
    window_->setContentViewController(preferencesViewController());
}

PreferencesWindowController::~PreferencesWindowController() = default;

void PreferencesWindowController::initWithCoder() {
    foundation::fatalError("init(coder:) has not been implemented");
}

void PreferencesWindowController::showWindow() {
    window_->makeKeyAndOrderFront();
}

PreferencesViewController& PreferencesWindowController::preferencesViewController() {
    if (!preferencesViewController_) {
        preferencesViewController_ = std::make_unique<PreferencesViewController>(
            toolkit_, keyDownMonitors_, mainQueue_, userDefaults_, shortcutManager_);
    }
    return *preferencesViewController_;
}

} // namespace pastewise
