#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/ObservableObject.h"
#include "Foundation/Published.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"
#include "Pastewise/AnalyticsManager.h"
#include "Platform/Time.h"
#include "Platform/UserDefaults.h"

#include <optional>
#include <string>

namespace pastewise {

/// What the user interface binds to: a copy of the analytics manager's totals, which follows what
/// the manager posts, and the user's choice whether a credit is flashed.
///
/// There may be several, each for itself: a choice made through one reaches another only when that
/// is made anew. Main thread only. Everything that it is given outlives it. No operation fails.
class AppState final : public foundation::ObservableObject {
  public:
    AppState(AnalyticsManager& analytics,
             platform::UserDefaults& defaults,
             platform::Clock& clock,
             foundation::NotificationCenter& notificationCenter,
             const foundation::LoggerFactory& loggers);
    ~AppState();

    /// Whether the preferences are on the screen, as far as whoever shows them has said.
    [[nodiscard]] bool isPreferencesWindowShown() const { return isPreferencesWindowShown_.get(); }

    void setIsPreferencesWindowShown(bool isShown) { isPreferencesWindowShown_.set(isShown); }

    /// Seconds saved today.
    [[nodiscard]] double todaySavedSeconds() const { return todaySavedSeconds_.get(); }

    /// Seconds credited last.
    [[nodiscard]] double lastInteractionSavedSeconds() const {
        return lastInteractionSavedSeconds_.get();
    }

    /// When something was credited last; none when there is nothing.
    [[nodiscard]] const std::optional<foundation::Date>& lastInteractionDate() const {
        return lastInteractionDate_.get();
    }

    /// Whether the status icon flashes after a credit. True unless the user chose otherwise.
    [[nodiscard]] bool shouldFlashSavings() const { return shouldFlashSavings_.get(); }

    /// The last credit that was to be flashed, in words; none before the first one and after a full
    /// reset.
    [[nodiscard]] const std::optional<std::string>& lastFlashValue() const {
        return lastFlashValue_.get();
    }

    /// Holds the place of a check of the system's permissions: says so in the log and does nothing.
    void checkPermissions() const;

    /// Takes over the manager's values as they are; the settings are not read again.
    void refreshFromStorage();

    /// Takes the user's choice and keeps it in the settings.
    void setShouldFlashSavings(bool enabled);

    /// Forgets the totals and the last credit, here, in the manager and in the settings.
    void resetStats();

    /// Sets today's total to 0 here and in the manager; the settings stay as they are.
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

} // namespace pastewise
