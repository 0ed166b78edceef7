#include "Pastewise/SharedInstances.h"

#include "Platform/Application.h"

#include <memory>
#include <string>

namespace pastewise {

SharedInstances::SharedInstances(platform::Platform& platform)
    : loggers_(platform.logSink(),
               platform.bundleIdentifier().value_or(std::string(platform::applicationId))),
      notificationCenter_(platform.mainQueue()),
      clipboardManager_([&platform, this] {
          return std::make_unique<ClipboardManager>(platform.pasteboard(), loggers_);
      }),
      analyticsManager_([&platform, this] {
          return std::make_unique<AnalyticsManager>(platform.userDefaults(),
                                                    platform.clock(),
                                                    platform.calendar(),
                                                    platform.mainQueue(),
                                                    notificationCenter_,
                                                    loggers_);
      }),
      analyticsStateBridge_([&platform, this] {
          return std::make_unique<AnalyticsStateBridge>(analyticsManager(),
                                                        platform.userDefaults(),
                                                        platform.clock(),
                                                        notificationCenter_,
                                                        loggers_);
      }),
      hotKeysController_([&platform] {
          return std::make_unique<hotkey::HotKeysController>(platform.eventHotKeyService());
      }),
      shortcutManager_([&platform, this] {
          return std::make_unique<ShortcutManager>(
              hotKeysController_.shared(), platform.userDefaults(), notificationCenter_, loggers_);
      }) {}

} // namespace pastewise
