#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Pastewise/AnalyticsManager.h"
#include "Pastewise/AppState.h"
#include "Platform/Time.h"
#include "Platform/UserDefaults.h"

namespace pastewise {

/// Owns the one state that the application delegate works with, apart from any that views make for
/// themselves. Main thread only; takes what the state takes.
class AnalyticsStateBridge {
  public:
    AnalyticsStateBridge(AnalyticsManager& analytics,
                         platform::UserDefaults& defaults,
                         platform::Clock& clock,
                         foundation::NotificationCenter& notificationCenter,
                         const foundation::LoggerFactory& loggers)
        : appState(analytics, defaults, clock, notificationCenter, loggers) {}

    /// The same one for as long as the bridge exists.
    AppState appState;
};

} // namespace pastewise
