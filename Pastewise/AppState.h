#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/ObservableObject.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"
#include "Pastewise/AnalyticsManager.h"
#include "Platform/Time.h"
#include "Platform/UserDefaults.h"

#include <optional>
#include <string>

namespace pastewise {

/// What the user interface binds to: a copy of the analytics manager's totals, updated by the
/// manager's notifications, and the user's choice whether a credit is flashed.
///
/// There may be several, independent of each other: a choice made through one is seen by another
/// only once that is constructed again. Main thread only. Does not own what it is given. No
/// operation fails.
class AppState final : public foundation::ObservableObject {
  public:
    AppState(AnalyticsManager& analytics,
             platform::UserDefaults& defaults,
             platform::Clock& clock,
             foundation::NotificationCenter& notificationCenter,
             const foundation::LoggerFactory& loggers);
    ~AppState();

    /// Whether the preferences have been shown, as reported by setIsPreferencesWindowShown().
    [[nodiscard]] bool isPreferencesWindowShown() const { return isPreferencesWindowShown_.get(); }

    void setIsPreferencesWindowShown(bool isShown) { isPreferencesWindowShown_.set(isShown); }

    /// Seconds saved today.
    [[nodiscard]] double todaySavedSeconds() const { return todaySavedSeconds_.get(); }

    /// The last credit in seconds.
    [[nodiscard]] double lastInteractionSavedSeconds() const {
        return lastInteractionSavedSeconds_.get();
    }

    /// The time of the last credit; none if there is none.
    [[nodiscard]] const std::optional<foundation::Date>& lastInteractionDate() const {
        return lastInteractionDate_.get();
    }

    /// Whether the status icon flashes after a credit. True unless the user chose otherwise.
    [[nodiscard]] bool shouldFlashSavings() const { return shouldFlashSavings_.get(); }

    /// The last flashed credit as a duration; none before the first one and after a full reset.
    [[nodiscard]] const std::optional<std::string>& lastFlashValue() const {
        return lastFlashValue_.get();
    }

    /// A placeholder that only logs: AppDelegate checks the permissions.
    void checkPermissions() const;

    /// Copies the manager's values; does not read the settings.
    void refreshFromStorage();

    /// Sets the user's choice, here and in the settings.
    void setShouldFlashSavings(bool enabled);

    /// Clears the totals and the last credit, here, in the manager and in the settings.
    void resetStats();

    /// Sets today's total to 0 here and in the manager, but not in the settings.
    void resetTodayOnly();

  private:
    void observeAnalytics();
    void analyticsDidApply(const foundation::Notification& notification);

    AnalyticsManager& analytics_;
    platform::UserDefaults& defaults_;
    platform::Clock& clock_;
    foundation::NotificationCenter& notificationCenter_;
    foundation::Logger logger_;
    foundation::Published<bool> isPreferencesWindowShown_{*this};
    foundation::Published<double> todaySavedSeconds_;
    foundation::Published<double> lastInteractionSavedSeconds_;
    foundation::Published<std::optional<foundation::Date>> lastInteractionDate_;
    foundation::Published<bool> shouldFlashSavings_{*this};
    foundation::Published<std::optional<std::string>> lastFlashValue_{*this};
    foundation::ObserverToken analyticsObserver_{};
    foundation::WeakReferenceSource<AppState> self_{this};
};

/// Owns the state that the application delegate uses. Main thread only; takes what the state takes.
class AnalyticsStateBridge {
  public:
    AnalyticsStateBridge(AnalyticsManager& analytics,
                         platform::UserDefaults& defaults,
                         platform::Clock& clock,
                         foundation::NotificationCenter& notificationCenter,
                         const foundation::LoggerFactory& loggers)
        : appState(analytics, defaults, clock, notificationCenter, loggers) {}

    AppState appState;
};

/// An observable object without properties, for views that have no state of their own.
class ContentViewModel final : public foundation::ObservableObject {};

} // namespace pastewise
