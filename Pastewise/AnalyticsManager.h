#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/ObservableObject.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"
#include "Platform/MainQueue.h"
#include "Platform/Time.h"
#include "Platform/UserDefaults.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pastewise {

/// Posted by AnalyticsManager after every credit and every full reset. The object is a double: the
/// seconds just credited, 0.0 after a reset.
inline constexpr std::string_view analyticsSavingsApplied = "analyticsSavingsApplied";

/// What started a conversion.
enum class ConversionSource : std::uint8_t { hotkey, manual };

/// "hotkey" or "manual".
[[nodiscard]] std::string_view description(ConversionSource source);

/// Credits each conversion with an estimate of the time that it saved and keeps the total of each
/// calendar day in the settings: one key per day, and past days stay.
///
/// A new day is noticed at the next credit, not at midnight: until then the total of the day before
/// stands. A credit counts at once; nothing waits for another program to come to the front.
///
/// Main thread only, except for recordConversion() and applyConfirmedSavings(). Does not own what
/// it is given. No operation fails towards its caller; settings of the wrong type count as 0 or as
/// no date.
class AnalyticsManager final : public foundation::ObservableObject {
  public:
    /// Loads the totals.
    AnalyticsManager(platform::UserDefaults& defaults,
                     platform::Clock& clock,
                     platform::Calendar& calendar,
                     platform::MainQueue& mainQueue,
                     foundation::NotificationCenter& notificationCenter,
                     const foundation::LoggerFactory& loggers);

    /// Seconds saved on the day of the last credit, or of the start.
    [[nodiscard]] double todaySavedSeconds() const { return todaySavedSeconds_.get(); }

    /// The last credit in seconds; 0 if there is none.
    [[nodiscard]] double lastInteractionSavedSeconds() const {
        return lastInteractionSavedSeconds_.get();
    }

    /// The time of the last credit; none if there is none.
    [[nodiscard]] const std::optional<foundation::Date>& lastInteractionDate() const {
        return lastInteractionDate_.get();
    }

    /// Always false: a flag for views that nothing depends on.
    [[nodiscard]] bool confirmationRequiresMiroFocus() const {
        return confirmationRequiresMiroFocus_.get();
    }

    /// Credits a conversion to `stickies` sticky notes: 10 seconds each, at most 300. A count below
    /// 1 credits nothing. Any thread.
    void recordConversion(std::int64_t stickies, ConversionSource source);

    /// Credits `seconds`: before it returns if called on the main thread, later on the main thread
    /// if called on another one. Any thread while the manager exists; a credit still pending when
    /// it is destroyed is dropped.
    void applyConfirmedSavings(double seconds);

    /// Clears the day's total and the last credit, here and in the settings.
    void resetStatistics();

    /// Sets today's total to 0 here but not in the settings, where the next credit replaces it with
    /// what has been credited since.
    void resetTodayOnly();

    /// A duration for the user: "45s", "1m 15s", "1h 00m 05s". Rounds to whole seconds, halves away
    /// from zero; less than one second is "0s". Seconds that are not finite, or do not fit 64 bits,
    /// are a fatal error. Any thread.
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
    /// The settings key of the day that todaySavedSeconds_ belongs to.
    std::string currentDayKey_;
    foundation::WeakReferenceSource<AnalyticsManager> self_{this};
};

} // namespace pastewise
