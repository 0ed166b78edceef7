#include "Pastewise/AnalyticsManager.h"

#include "Foundation/FatalError.h"
#include "Pastewise/SettingsKeys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace pastewise {

namespace {

/// The nearest whole number, halves away from zero.
std::int64_t wholeSeconds(double seconds) {
    constexpr double twoToThe63rd = 9223372036854775808.0;
    const double rounded = std::round(seconds);
    // False for NaN.
    const bool fits = rounded >= -twoToThe63rd && rounded < twoToThe63rd;
    if (!fits) {
        foundation::fatalError("a duration is not a number of seconds that fits 64 bits");
    }
    return static_cast<std::int64_t>(rounded);
}

/// A number below 60 with two digits.
std::string padded(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string_view description(ConversionSource source) {
    switch (source) {
    case ConversionSource::hotkey:
        return "hotkey";
    case ConversionSource::manual:
        return "manual";
    }
    foundation::fatalError("a conversion has an unknown source");
}

AnalyticsManager::AnalyticsManager(platform::UserDefaults& defaults,
                                   platform::Clock& clock,
                                   platform::Calendar& calendar,
                                   platform::MainQueue& mainQueue,
                                   foundation::NotificationCenter& notificationCenter,
                                   const foundation::LoggerFactory& loggers)
    : logger_(loggers.logger("AnalyticsManager")),
      defaults_(defaults),
      clock_(clock),
      calendar_(calendar),
      mainQueue_(mainQueue),
      notificationCenter_(notificationCenter) {
    logger_.debug("Initializing AnalyticsManager");
    lastInteractionSavedSeconds_.set(defaults_.doubleForKey(lastInteractionSavedSecondsKey));
    lastInteractionDate_.set(defaults_.dateForKey(lastInteractionDateKey));
    defaults_.setObject(confirmationRequiresMiroFocusKey, confirmationRequiresMiroFocus());
    currentDayKey_ = dayKey(clock_.now());
    todaySavedSeconds_.set(defaults_.doubleForKey(currentDayKey_));
}

void AnalyticsManager::recordConversion(std::int64_t stickies, ConversionSource source) {
    logger_.debug(
        "Recording conversion - stickies: %ld, source: %s", stickies, description(source));
    if (stickies < 1) {
        logger_.debug("Conversion produced no stickies; skipping savings computation");
        return;
    }
    const double savings =
        std::min(static_cast<double>(stickies) * perStickySeconds, maxPerInteractionSeconds);
    if (savings > 0) {
        applyConfirmedSavings(savings);
    } else {
        logger_.debug("Computed savings is zero after capping; ignoring");
    }
}

void AnalyticsManager::applyConfirmedSavings(double seconds) {
    logger_.debug("Applying confirmed savings: %{public}f seconds", seconds);
    if (mainQueue_.isMainThread()) {
        persistSavings(seconds);
        return;
    }
    mainQueue_.async([weakSelf = self_.reference(), seconds] {
        if (AnalyticsManager* const self = weakSelf.get()) {
            self->persistSavings(seconds);
        }
    });
}

void AnalyticsManager::persistSavings(double seconds) {
    logger_.debug("Persisting savings on main thread");
    lastInteractionSavedSeconds_.set(seconds);
    const foundation::Date now = clock_.now();
    lastInteractionDate_.set(now);
    std::string todayKey = dayKey(clock_.now());
    if (todayKey != currentDayKey_) {
        logger_.debug("Day rollover detected; switching daily key from %{public}s to %{public}s",
                      currentDayKey_,
                      todayKey);
        currentDayKey_ = std::move(todayKey);
        todaySavedSeconds_.set(defaults_.doubleForKey(currentDayKey_));
    }
    todaySavedSeconds_.set(todaySavedSeconds() + seconds);
    defaults_.setObject(lastInteractionSavedSecondsKey, seconds);
    defaults_.setObject(lastInteractionDateKey, now);
    defaults_.setObject(currentDayKey_, todaySavedSeconds());
    postSavingsApplied(seconds);
}

void AnalyticsManager::resetStatistics() {
    logger_.debug("Resetting analytics statistics");
    lastInteractionSavedSeconds_.set(0);
    lastInteractionDate_.set(std::nullopt);
    todaySavedSeconds_.set(0);
    defaults_.setObject(lastInteractionSavedSecondsKey, 0.0);
    defaults_.removeObject(lastInteractionDateKey);
    defaults_.setObject(currentDayKey_, 0.0);
    postSavingsApplied(0);
}

void AnalyticsManager::resetTodayOnly() {
    logger_.debug("Resetting today's local counter only (persistent storage unchanged)");
    todaySavedSeconds_.set(0);
}

std::string AnalyticsManager::formatDuration(double seconds) {
    const std::int64_t whole = wholeSeconds(seconds);
    if (whole < 1) {
        return "0s";
    }
    const std::int64_t h = whole / 3600;
    const std::int64_t m = whole % 3600 / 60;
    const std::int64_t s = whole % 60;
    if (h > 0) {
        const std::string text = std::to_string(h) + "h " + padded(m) + "m";
        return s == 0 ? text : text + " " + padded(s) + "s";
    }
    if (m == 0) {
        return std::to_string(s) + "s";
    }
    const std::string text = std::to_string(m) + "m";
    return s == 0 ? text : text + " " + std::to_string(s) + "s";
}

std::string AnalyticsManager::dayKey(foundation::Date date) const {
    const platform::DateComponents components = calendar_.dateComponents(date);
    std::array<char, 40> day{};
    std::snprintf(day.data(),
                  day.size(),
                  "%04d-%02d-%02d",
                  components.year.value_or(1970),
                  components.month.value_or(1),
                  components.day.value_or(1));
    return std::string(todaySavedSecondsKeyPrefix) + day.data();
}

void AnalyticsManager::postSavingsApplied(double seconds) {
    notificationCenter_.post({.name = std::string(analyticsSavingsApplied), .object = seconds});
}

} // namespace pastewise
