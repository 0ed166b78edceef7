#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/ObservableObject.h"
#include "Foundation/Published.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"
#include "Pastewise/ConversionSource.h"
#include "Platform/MainQueue.h"
#include "Platform/Time.h"
#include "Platform/UserDefaults.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pastewise {

/// The name of what AnalyticsManager posts after every credit and every full reset. The object is
/// a double: the seconds just credited, 0.0 after a reset.
inline constexpr std::string_view analyticsSavingsApplied = "analyticsSavingsApplied";

/// Credits each conversion with an estimate of the time that it saved, and keeps the total of each
/// calendar day in the user's settings: one key per day, and the days that have passed stay.
///
/// A new day is noticed when something is credited, not at midnight: until then the total of the
/// day before stands. A credit counts at once; nothing waits for another program to come to the
/// front.
///
/// Belongs to the main thread but for recordConversion() and applyConfirmedSavings(). Everything
/// that it is given outlives it. No operation fails towards its caller; what the settings hold in a
/// wrong type counts as 0 or as no date.
class AnalyticsManager final : public foundation::ObservableObject {
  public:
    /// Loads the totals.
    AnalyticsManager(platform::UserDefaults& defaults,
                     platform::Clock& clock,
                     platform::Calendar& calendar,
                     platform::MainQueue& mainQueue,
                     foundation::NotificationCenter& notificationCenter,
                     const foundation::LoggerFactory& loggers);

    /// Seconds saved on the day last seen.
    [[nodiscard]] double todaySavedSeconds() const { return todaySavedSeconds_.get(); }

    /// Seconds credited last; 0 when there are none.
    [[nodiscard]] double lastInteractionSavedSeconds() const {
        return lastInteractionSavedSeconds_.get();
    }

    /// When something was credited last; none when there is nothing.
    [[nodiscard]] const std::optional<foundation::Date>& lastInteractionDate() const {
        return lastInteractionDate_.get();
    }

    /// Always false: a flag to bind to that nothing depends on.
    [[nodiscard]] bool confirmationRequiresMiroFocus() const {
        return confirmationRequiresMiroFocus_.get();
    }

    /// Credits a conversion that made `stickies` sticky notes: 10 seconds each, at most 300. A
    /// count below 1 credits nothing. Any thread.
    void recordConversion(std::int64_t stickies, ConversionSource source);

    /// Credits seconds that have been computed: before it returns on the main thread, later there
    /// when called on another one. Any thread, for as long as the manager exists; a credit that is
    /// still on its way when it ends is dropped.
    void applyConfirmedSavings(double seconds);

    /// Sets the total of the day last seen and the last credit to nothing, here and in the
    /// settings.
    void resetStatistics();

    /// Sets today's total to 0 here alone. The stored one stands until the next credit, which
    /// replaces it with what has been credited since.
    void resetTodayOnly();

    /// A duration in words for the user: "45s", "1m 15s", "1h 00m 05s". Rounds to whole seconds,
    /// halves away from zero; less than one second is "0s". Seconds that are not finite, or do not
    /// fit 64 bits, are a fatal error. Any thread.
    [[nodiscard]] static std::string formatDuration(double seconds);

  private:
    static constexpr double perStickySeconds = 10.0;
    static constexpr double maxPerInteractionSeconds = 300.0;

    [[nodiscard]] std::string dayKey(foundation::Date date) const;
    void persistSavings(double seconds);
    void postSavingsApplied(double seconds);

    foundation::Published<double> todaySavedSeconds_{*this};
    foundation::Published<double> lastInteractionSavedSeconds_{*this};
    foundation::Published<std::optional<foundation::Date>> lastInteractionDate_{*this};
    foundation::Published<bool> confirmationRequiresMiroFocus_{*this};
    foundation::Logger logger_;
    platform::UserDefaults& defaults_;
    platform::Clock& clock_;
    platform::Calendar& calendar_;
    platform::MainQueue& mainQueue_;
    foundation::NotificationCenter& notificationCenter_;
    /// The settings' key of the day that todaySavedSeconds_ belongs to.
    std::string currentDayKey_;
    foundation::WeakReferenceSource<AnalyticsManager> self_{this};
};

} // namespace pastewise
