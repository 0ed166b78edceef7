#include "Pastewise/AppState.h"

#include "Pastewise/SettingsKeys.h"

namespace pastewise {

AppState::AppState(AnalyticsManager& analytics,
                   platform::UserDefaults& defaults,
                   platform::Clock& clock,
                   foundation::NotificationCenter& notificationCenter,
                   const foundation::LoggerFactory& loggers)
    : analytics_(analytics),
      defaults_(defaults),
      clock_(clock),
      notificationCenter_(notificationCenter),
      logger_(loggers.logger("AppState")),
      todaySavedSeconds_(*this, analytics.todaySavedSeconds()),
      lastInteractionSavedSeconds_(*this, analytics.lastInteractionSavedSeconds()),
      lastInteractionDate_(*this, analytics.lastInteractionDate()) {
    if (!defaults_.object(shouldFlashSavingsKey)) {
        defaults_.setObject(shouldFlashSavingsKey, true);
    }
    shouldFlashSavings_.set(defaults_.boolForKey(shouldFlashSavingsKey));
    logger_.debug("Initializing AppState with shouldFlashSavings = %{bool,public}d",
                  shouldFlashSavings());
    checkPermissions();
    observeAnalytics();
}

AppState::~AppState() {
    notificationCenter_.removeObserver(analyticsObserver_);
}

void AppState::observeAnalytics() {
    analyticsObserver_ = notificationCenter_.addObserver(
        analyticsSavingsApplied,
        [weakSelf = self_.reference()](const foundation::Notification& notification) {
            if (AppState* const self = weakSelf.get()) {
                self->analyticsDidApply(notification);
            }
        });
}

void AppState::analyticsDidApply(const foundation::Notification& notification) {
    const double seconds =
        notification.object ? foundation::doubleValue(*notification.object).value_or(0) : 0;
    todaySavedSeconds_.set(analytics_.todaySavedSeconds());
    lastInteractionSavedSeconds_.set(seconds);
    lastInteractionDate_.set(clock_.now());
    if (shouldFlashSavings() && seconds > 0) {
        lastFlashValue_.set(AnalyticsManager::formatDuration(seconds));
    }
    logger_.debug("AppState received analytics update with seconds = %{public}f", seconds);
}

void AppState::checkPermissions() const {
    logger_.debug("checkPermissions placeholder invoked");
}

void AppState::refreshFromStorage() {
    logger_.debug("Refreshing AppState from persistent analytics storage");
    todaySavedSeconds_.set(analytics_.todaySavedSeconds());
    lastInteractionSavedSeconds_.set(analytics_.lastInteractionSavedSeconds());
    lastInteractionDate_.set(analytics_.lastInteractionDate());
}

void AppState::setShouldFlashSavings(bool enabled) {
    logger_.debug("setShouldFlashSavings toggled to %{bool,public}d", enabled);
    shouldFlashSavings_.set(enabled);
    defaults_.setObject(shouldFlashSavingsKey, enabled);
}

void AppState::resetStats() {
    logger_.debug("resetStats requested");
    analytics_.resetStatistics();
    // The manager has posted the reset as a credit of 0, which set the time of the last credit.
    todaySavedSeconds_.set(0);
    lastInteractionSavedSeconds_.set(0);
    lastInteractionDate_.set(std::nullopt);
    lastFlashValue_.set(std::nullopt);
}

void AppState::resetTodayOnly() {
    logger_.debug("resetTodayOnly requested from settings - only resetting local counter");
    analytics_.resetTodayOnly();
    todaySavedSeconds_.set(0);
}

} // namespace pastewise
