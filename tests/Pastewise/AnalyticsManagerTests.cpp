#include "Pastewise/AnalyticsManager.h"
#include "tests/Pastewise/AnalyticsTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using namespace testing_support; // NOLINT(google-build-using-namespace)
using foundation::Date;
using foundation::Dictionary;
using foundation::Value;
using pastewise::AnalyticsManager;
using pastewise::ConversionSource;
using platform::MemoryCalendar;
using testing::ElementsAre;
using testing::IsEmpty;
using Write = platform::MemoryUserDefaults::Write;

class AnalyticsManagerTests : public AnalyticsTest {
  protected:
    /// The credit for a first conversion of that many sticky notes.
    double creditOf(std::int64_t stickies) {
        start().recordConversion(stickies, ConversionSource::hotkey);
        return manager_->lastInteractionSavedSeconds();
    }
};

// Construction

TEST_F(AnalyticsManagerTests, StartsWithNothingAtTheFirstLaunch) {
    const AnalyticsManager& manager = start();
    EXPECT_EQ(manager.todaySavedSeconds(), 0);
    EXPECT_EQ(manager.lastInteractionSavedSeconds(), 0);
    EXPECT_EQ(manager.lastInteractionDate(), std::nullopt);
    EXPECT_FALSE(manager.confirmationRequiresMiroFocus());
    EXPECT_THAT(sink_.messages(), ElementsAre("debug: Initializing AnalyticsManager"));
    EXPECT_EQ(sink_.entries().at(0).category, "AnalyticsManager");
    EXPECT_THAT(posted_, IsEmpty());
}

TEST_F(AnalyticsManagerTests, StoresOnlyTheFocusFlagWhenConstructed) {
    defaults_.setObject(focusKey, true);
    forgetWhatWasSaid();
    EXPECT_FALSE(start().confirmationRequiresMiroFocus());
    EXPECT_THAT(defaults_.writes(), ElementsAre(Write{std::string(focusKey), false}));
}

TEST_F(AnalyticsManagerTests, ReadsAndStoresSettingsInOrderWhenConstructed) {
    start();
    EXPECT_THAT(journal_->calls(),
                ElementsAre("log debug: Initializing AnalyticsManager",
                            "read analytics.lastInteractionSavedSeconds",
                            "read analytics.lastInteractionDate",
                            "store analytics.confirmationRequiresMiroFocus",
                            "read clock",
                            "read analytics.todaySavedSeconds.2024-03-07"));
}

TEST_F(AnalyticsManagerTests, RestoresTheDaysTotalAfterARestart) {
    start().recordConversion(7, ConversionSource::hotkey);
    queue_.advance(3h);
    const AnalyticsManager& manager = start();
    EXPECT_EQ(manager.todaySavedSeconds(), 70);
    EXPECT_EQ(manager.lastInteractionSavedSeconds(), 70);
    EXPECT_EQ(manager.lastInteractionDate(), noon);
    EXPECT_EQ(stored(marchSeventhKey), Value(70.0));
    EXPECT_FALSE(manager.confirmationRequiresMiroFocus());
    EXPECT_EQ(stored(focusKey), Value(false));
}

TEST_F(AnalyticsManagerTests, LoadsTheTotalStoredForTheDay) {
    start().recordConversion(7, ConversionSource::hotkey);
    queue_.advance(24h);
    EXPECT_EQ(start().todaySavedSeconds(), 0);
    EXPECT_EQ(manager_->lastInteractionSavedSeconds(), 70);

    defaults_.setObject(marchEighthKey, 20.0);
    EXPECT_EQ(start().todaySavedSeconds(), 20);
    EXPECT_EQ(stored(marchSeventhKey), Value(70.0));
}

TEST_F(AnalyticsManagerTests, IgnoresStoredValuesOfTheWrongType) {
    defaults_.setObject(lastSecondsKey, "40");
    defaults_.setObject(lastDateKey, 731500000.0);
    defaults_.setObject(marchSeventhKey, Dictionary{{"seconds", 40.0}});
    const AnalyticsManager& manager = start();
    EXPECT_EQ(manager.lastInteractionSavedSeconds(), 0);
    EXPECT_EQ(manager.lastInteractionDate(), std::nullopt);
    EXPECT_EQ(manager.todaySavedSeconds(), 0);

    defaults_.setObject(lastSecondsKey, noon);
    defaults_.setObject(lastDateKey, "2024-03-07");
    defaults_.setObject(marchSeventhKey, foundation::Other{});
    const AnalyticsManager& again = start();
    EXPECT_EQ(again.lastInteractionSavedSeconds(), 0);
    EXPECT_EQ(again.lastInteractionDate(), std::nullopt);
    EXPECT_EQ(again.todaySavedSeconds(), 0);
}

TEST_F(AnalyticsManagerTests, ReadsAStoredInteger) {
    defaults_.setObject(marchSeventhKey, std::int64_t{40});
    EXPECT_EQ(start().todaySavedSeconds(), 40);
}

// Credits

TEST_F(AnalyticsManagerTests, IgnoresAConversionWithoutStickyNotes) {
    for (const std::int64_t stickies : {std::int64_t{0}, std::int64_t{-3}}) {
        start().recordConversion(5, ConversionSource::hotkey);
        const double today = manager_->todaySavedSeconds();
        forgetWhatWasSaid();
        queue_.advance(1h);
        manager_->recordConversion(stickies, ConversionSource::hotkey);
        EXPECT_EQ(manager_->todaySavedSeconds(), today);
        EXPECT_EQ(manager_->lastInteractionSavedSeconds(), 50);
        EXPECT_LT(*manager_->lastInteractionDate(), clock_.now());
        EXPECT_THAT(defaults_.writes(), IsEmpty());
        EXPECT_THAT(posted_, IsEmpty());
        EXPECT_THAT(
            sink_.messages(),
            ElementsAre("debug: Recording conversion - stickies: " + std::to_string(stickies) +
                            ", source: hotkey",
                        "debug: Conversion produced no stickies; skipping savings computation"));
    }
}

TEST_F(AnalyticsManagerTests, CreditsTenSecondsPerStickyNoteUpToThreeHundred) {
    EXPECT_EQ(creditOf(1), 10);
    EXPECT_EQ(creditOf(29), 290);
    EXPECT_EQ(creditOf(30), 300);
    EXPECT_EQ(creditOf(31), 300);
    EXPECT_EQ(creditOf(1000), 300);
    EXPECT_EQ(creditOf(std::numeric_limits<std::int64_t>::max()), 300);
}

TEST_F(AnalyticsManagerTests, AddsUpTheCreditsOfADay) {
    start().recordConversion(5, ConversionSource::hotkey);
    manager_->recordConversion(40, ConversionSource::hotkey);
    EXPECT_EQ(manager_->todaySavedSeconds(), 350);
    EXPECT_EQ(manager_->lastInteractionSavedSeconds(), 300);
    EXPECT_EQ(stored(marchSeventhKey), Value(350.0));
    EXPECT_EQ(stored(lastSecondsKey), Value(300.0));
    EXPECT_THAT(posted_, ElementsAre(Value(50.0), Value(300.0)));
}

TEST_F(AnalyticsManagerTests, StoresCreditDateAndTotalWithTheirTypes) {
    start().recordConversion(3, ConversionSource::hotkey);
    EXPECT_THAT(defaults_.writes(),
                ElementsAre(Write{std::string(focusKey), false},
                            Write{std::string(lastSecondsKey), 30.0},
                            Write{std::string(lastDateKey), noon},
                            Write{std::string(marchSeventhKey), 30.0}));
}

TEST_F(AnalyticsManagerTests, LogsEveryStepOfACredit) {
    start();
    forgetWhatWasSaid();
    manager_->recordConversion(3, ConversionSource::manual);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Recording conversion - stickies: 3, source: manual",
                            "debug: Applying confirmed savings: 30.000000 seconds",
                            "debug: Persisting savings on main thread"));
    EXPECT_EQ(sink_.entries().at(0).format, "Recording conversion - stickies: %ld, source: %s");
    EXPECT_EQ(sink_.entries().at(1).format, "Applying confirmed savings: %{public}f seconds");
}

TEST_F(AnalyticsManagerTests, PostsACreditAfterStoringIt) {
    std::vector<std::optional<Value>> storedWhenPosted;
    center_.addObserver(pastewise::analyticsSavingsApplied, [&](const auto& /*notification*/) {
        storedWhenPosted.push_back(stored(marchSeventhKey));
    });
    start().recordConversion(2, ConversionSource::hotkey);
    EXPECT_THAT(storedWhenPosted, ElementsAre(Value(20.0)));
    EXPECT_THAT(posted_, ElementsAre(Value(20.0)));
}

TEST_F(AnalyticsManagerTests, AppliesACreditOfZeroAtOnce) {
    start().applyConfirmedSavings(50);
    queue_.advance(1h);
    forgetWhatWasSaid();
    manager_->applyConfirmedSavings(0);
    EXPECT_EQ(queue_.pendingCount(), 0U);
    EXPECT_EQ(manager_->todaySavedSeconds(), 50);
    EXPECT_EQ(manager_->lastInteractionSavedSeconds(), 0);
    EXPECT_EQ(manager_->lastInteractionDate(), noon + 1h);
    EXPECT_THAT(posted_, ElementsAre(Value(0.0)));
}

TEST_F(AnalyticsManagerTests, SubtractsANegativeCredit) {
    start().applyConfirmedSavings(50);
    manager_->applyConfirmedSavings(-20);
    EXPECT_EQ(manager_->todaySavedSeconds(), 30);
    EXPECT_EQ(manager_->lastInteractionSavedSeconds(), -20);
    EXPECT_EQ(stored(marchSeventhKey), Value(30.0));
    EXPECT_THAT(posted_, ElementsAre(Value(50.0), Value(-20.0)));
}

TEST_F(AnalyticsManagerTests, AnnouncesEveryChangeBeforeItHappens) {
    start().recordConversion(2, ConversionSource::hotkey);

    struct Seen {
        double last;
        std::optional<Date> date;
        double today;

        bool operator==(const Seen&) const = default;
    };

    std::vector<Seen> seen;
    manager_->addObjectWillChangeObserver([&] {
        seen.push_back({.last = manager_->lastInteractionSavedSeconds(),
                        .date = manager_->lastInteractionDate(),
                        .today = manager_->todaySavedSeconds()});
    });
    queue_.advance(1h);
    manager_->recordConversion(3, ConversionSource::hotkey);
    manager_->resetTodayOnly();
    manager_->resetStatistics();
    const Date later = noon + 1h;
    EXPECT_THAT(seen,
                ElementsAre(Seen{20, noon, 20},
                            Seen{30, noon, 20},
                            Seen{30, later, 20},
                            Seen{30, later, 50},
                            Seen{30, later, 0},
                            Seen{0, later, 0},
                            Seen{0, std::nullopt, 0}));
}

// Other threads

TEST_F(AnalyticsManagerTests, AppliesACreditFromAnotherThreadOnTheMainThread) {
    start();
    forgetWhatWasSaid();
    queue_.setIsMainThread(false);
    std::thread([this] { manager_->recordConversion(3, ConversionSource::hotkey); }).join();
    queue_.setIsMainThread(true);
    EXPECT_EQ(manager_->todaySavedSeconds(), 0);
    EXPECT_THAT(defaults_.writes(), IsEmpty());
    EXPECT_THAT(posted_, IsEmpty());
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Recording conversion - stickies: 3, source: hotkey",
                            "debug: Applying confirmed savings: 30.000000 seconds"));

    queue_.drain();
    EXPECT_EQ(manager_->todaySavedSeconds(), 30);
    EXPECT_EQ(stored(marchSeventhKey), Value(30.0));
    EXPECT_THAT(posted_, ElementsAre(Value(30.0)));
    EXPECT_EQ(sink_.messages().back(), "debug: Persisting savings on main thread");
}

TEST_F(AnalyticsManagerTests, DropsAPendingCreditWhenDestroyed) {
    start();
    queue_.setIsMainThread(false);
    manager_->applyConfirmedSavings(30);
    queue_.setIsMainThread(true);
    manager_.reset();
    forgetWhatWasSaid();
    queue_.drain();
    EXPECT_EQ(queue_.pendingCount(), 0U);
    EXPECT_THAT(defaults_.writes(), IsEmpty());
    EXPECT_THAT(posted_, IsEmpty());
    EXPECT_THAT(sink_.messages(), IsEmpty());
}

// Days

TEST_F(AnalyticsManagerTests, FormatsADaysKey) {
    clock_.setNow(std::chrono::sys_days(std::chrono::year(987) / 12 / 31));
    start().recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(stored("analytics.todaySavedSeconds.0987-12-31"), Value(10.0));
}

TEST_F(AnalyticsManagerTests, ReplacesMissingDateComponentsByDefaults) {
    calendar_.leaveOut(MemoryCalendar::Component::month);
    start().recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(stored("analytics.todaySavedSeconds.2024-01-07"), Value(10.0));
    calendar_.leaveOut(MemoryCalendar::Component::day);
    manager_->recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(stored("analytics.todaySavedSeconds.2024-01-01"), Value(10.0));
    calendar_.leaveOut(MemoryCalendar::Component::year);
    manager_->recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(stored("analytics.todaySavedSeconds.1970-01-01"), Value(10.0));
}

TEST_F(AnalyticsManagerTests, SwitchesToTheNewDayAtTheFirstCreditAfterMidnight) {
    start().recordConversion(5, ConversionSource::hotkey);
    queue_.advance(13h);
    EXPECT_EQ(manager_->todaySavedSeconds(), 50) << "the day before stands until the next credit";
    forgetWhatWasSaid();

    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(manager_->todaySavedSeconds(), 20);
    EXPECT_EQ(stored(marchSeventhKey), Value(50.0));
    EXPECT_EQ(stored(marchEighthKey), Value(20.0));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Recording conversion - stickies: 2, source: hotkey",
                            "debug: Applying confirmed savings: 20.000000 seconds",
                            "debug: Persisting savings on main thread",
                            "debug: Day rollover detected; switching daily key from "
                            "analytics.todaySavedSeconds.2024-03-07 to "
                            "analytics.todaySavedSeconds.2024-03-08"));
    EXPECT_EQ(sink_.entries().at(3).redacted, sink_.entries().at(3).whole);
    EXPECT_THAT(posted_, ElementsAre(Value(20.0)));
}

TEST_F(AnalyticsManagerTests, AddsTheFirstCreditOfADayToItsStoredTotal) {
    defaults_.setObject(marchEighthKey, 100.0);
    start().recordConversion(5, ConversionSource::hotkey);
    queue_.advance(24h);
    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(manager_->todaySavedSeconds(), 120);
    EXPECT_EQ(stored(marchEighthKey), Value(120.0));
    EXPECT_EQ(stored(marchSeventhKey), Value(50.0));
}

TEST_F(AnalyticsManagerTests, EndsTheDayAtMidnightInTheUsersTimeZone) {
    calendar_.setUtcOffset(5h + 30min);
    start();
    clock_.setNow(noon + 6h + 29min);
    manager_->recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(stored(marchSeventhKey), Value(10.0));
    queue_.advance(1min);
    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(stored(marchSeventhKey), Value(10.0));
    EXPECT_EQ(stored(marchEighthKey), Value(20.0));
}

TEST_F(AnalyticsManagerTests, FollowsTheTimeZoneBackToThePreviousDay) {
    calendar_.setUtcOffset(13h);
    start().recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(stored(marchEighthKey), Value(10.0));
    calendar_.setUtcOffset(-10h);
    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(stored(marchSeventhKey), Value(20.0));
    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(stored(marchSeventhKey), Value(40.0));
    EXPECT_EQ(stored(marchEighthKey), Value(10.0));
}

/// A clock that advances by an hour whenever it is read.
class HurryingClock final : public platform::Clock {
  public:
    explicit HurryingClock(Date now) : now_(now) {}

    [[nodiscard]] Date now() const override {
        const Date before = now_;
        now_ += 1h;
        return before;
    }

  private:
    mutable Date now_;
};

TEST_F(AnalyticsManagerTests, ReadsTheClockAgainForTheDayOfACredit) {
    const Date beforeMidnight = noon + 11h;
    HurryingClock clock(beforeMidnight - 1h);
    AnalyticsManager manager(defaults_, clock, calendar_, queue_, center_, loggers_);
    manager.recordConversion(1, ConversionSource::hotkey);
    EXPECT_EQ(manager.lastInteractionDate(), beforeMidnight);
    EXPECT_EQ(stored(marchSeventhKey), std::nullopt);
    EXPECT_EQ(stored(marchEighthKey), Value(10.0));
}

// Resets

TEST_F(AnalyticsManagerTests, AFullResetClearsTotalsAndLastCredit) {
    start().recordConversion(5, ConversionSource::hotkey);
    forgetWhatWasSaid();
    manager_->resetStatistics();
    EXPECT_EQ(manager_->todaySavedSeconds(), 0);
    EXPECT_EQ(manager_->lastInteractionSavedSeconds(), 0);
    EXPECT_EQ(manager_->lastInteractionDate(), std::nullopt);
    EXPECT_EQ(stored(lastDateKey), std::nullopt);
    EXPECT_EQ(stored(lastSecondsKey), Value(0.0));
    EXPECT_EQ(stored(marchSeventhKey), Value(0.0));
    EXPECT_THAT(defaults_.writes(),
                ElementsAre(Write{std::string(lastSecondsKey), 0.0},
                            Write{std::string(lastDateKey), std::nullopt},
                            Write{std::string(marchSeventhKey), 0.0}));
    EXPECT_THAT(posted_, ElementsAre(Value(0.0)));
    EXPECT_THAT(sink_.messages(), ElementsAre("debug: Resetting analytics statistics"));
}

TEST_F(AnalyticsManagerTests, LogsAResetBeforeAnyChange) {
    start();
    std::vector<std::string> lastMessages;
    manager_->addObjectWillChangeObserver([&] { lastMessages.push_back(sink_.messages().back()); });
    manager_->resetTodayOnly();
    EXPECT_THAT(lastMessages,
                ElementsAre("debug: Resetting today's local counter only (persistent storage "
                            "unchanged)"));
    lastMessages.clear();
    manager_->resetStatistics();
    EXPECT_EQ(lastMessages.front(), "debug: Resetting analytics statistics");
}

TEST_F(AnalyticsManagerTests, PostsAFullResetAfterStoringIt) {
    start().recordConversion(5, ConversionSource::hotkey);
    std::vector<std::optional<Value>> storedWhenPosted;
    center_.addObserver(pastewise::analyticsSavingsApplied, [&](const auto& /*notification*/) {
        storedWhenPosted = {stored(lastSecondsKey), stored(lastDateKey), stored(marchSeventhKey)};
    });
    manager_->resetStatistics();
    EXPECT_THAT(storedWhenPosted, ElementsAre(Value(0.0), std::nullopt, Value(0.0)));
}

TEST_F(AnalyticsManagerTests, AFullResetAfterMidnightClearsOnlyTheLastSeenDay) {
    start().recordConversion(5, ConversionSource::hotkey);
    queue_.advance(24h);
    defaults_.setObject(marchEighthKey, 60.0);
    manager_->resetStatistics();
    EXPECT_EQ(stored(marchSeventhKey), Value(0.0));
    EXPECT_EQ(stored(marchEighthKey), Value(60.0));
}

TEST_F(AnalyticsManagerTests, AResetOfTodayReplacesTheStoredTotalAtTheNextCredit) {
    start().recordConversion(5, ConversionSource::hotkey);
    forgetWhatWasSaid();
    manager_->resetTodayOnly();
    EXPECT_EQ(manager_->todaySavedSeconds(), 0);
    EXPECT_EQ(manager_->lastInteractionSavedSeconds(), 50);
    EXPECT_EQ(manager_->lastInteractionDate(), noon);
    EXPECT_EQ(stored(marchSeventhKey), Value(50.0));
    EXPECT_THAT(defaults_.writes(), IsEmpty());
    EXPECT_THAT(posted_, IsEmpty());
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Resetting today's local counter only (persistent storage "
                            "unchanged)"));

    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(manager_->todaySavedSeconds(), 20);
    EXPECT_EQ(stored(marchSeventhKey), Value(20.0));
}

TEST_F(AnalyticsManagerTests, AResetOfTodayWithoutACreditLeavesTheStoredTotal) {
    start().recordConversion(5, ConversionSource::hotkey);
    manager_->resetTodayOnly();
    EXPECT_EQ(start().todaySavedSeconds(), 50);
}

// Durations

TEST(FormatDurationTests, IsZeroBelowOneSecond) {
    EXPECT_EQ(AnalyticsManager::formatDuration(0), "0s");
    EXPECT_EQ(AnalyticsManager::formatDuration(-0.0), "0s");
    EXPECT_EQ(AnalyticsManager::formatDuration(0.4), "0s");
    EXPECT_EQ(AnalyticsManager::formatDuration(-5), "0s");
    EXPECT_EQ(AnalyticsManager::formatDuration(-0.5), "0s");
    EXPECT_EQ(AnalyticsManager::formatDuration(-9223372036854775808.0), "0s");
}

TEST(FormatDurationTests, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(AnalyticsManager::formatDuration(0.5), "1s");
    EXPECT_EQ(AnalyticsManager::formatDuration(2.5), "3s");
    EXPECT_EQ(AnalyticsManager::formatDuration(59.4), "59s");
    EXPECT_EQ(AnalyticsManager::formatDuration(59.5), "1m");
    EXPECT_EQ(AnalyticsManager::formatDuration(3599.6), "1h 00m");
}

TEST(FormatDurationTests, PadsOnlyWithHours) {
    EXPECT_EQ(AnalyticsManager::formatDuration(45), "45s");
    EXPECT_EQ(AnalyticsManager::formatDuration(60), "1m");
    EXPECT_EQ(AnalyticsManager::formatDuration(65), "1m 5s");
    EXPECT_EQ(AnalyticsManager::formatDuration(75), "1m 15s");
    EXPECT_EQ(AnalyticsManager::formatDuration(600), "10m");
    EXPECT_EQ(AnalyticsManager::formatDuration(3599), "59m 59s");
    EXPECT_EQ(AnalyticsManager::formatDuration(3600), "1h 00m");
    EXPECT_EQ(AnalyticsManager::formatDuration(3605), "1h 00m 05s");
    EXPECT_EQ(AnalyticsManager::formatDuration(7322), "2h 02m 02s");
    EXPECT_EQ(AnalyticsManager::formatDuration(43199), "11h 59m 59s");
}

TEST(FormatDurationTests, HandlesTheLargest64BitInteger) {
    // The largest double below 2^63.
    EXPECT_EQ(AnalyticsManager::formatDuration(9223372036854774784.0), "2562047788015215h 13m 04s");
}

TEST(FormatDurationDeathTest, RejectsSecondsThatDoNotFit64Bits) {
    const auto format = [](double seconds) {
        return AnalyticsManager::formatDuration(seconds).size();
    };
    constexpr const char* complaint =
        "Fatal error: a duration is not a number of seconds that fits 64 bits";
    EXPECT_DEATH(format(std::numeric_limits<double>::quiet_NaN()), complaint);
    EXPECT_DEATH(format(std::numeric_limits<double>::infinity()), complaint);
    EXPECT_DEATH(format(-std::numeric_limits<double>::infinity()), complaint);
    EXPECT_DEATH(format(9223372036854775808.0), complaint);
    EXPECT_DEATH(format(-9223372036854777856.0), complaint);
    EXPECT_DEATH(format(1e300), complaint);
}

TEST(ConversionSourceTests, HasADescriptionForTheLog) {
    EXPECT_EQ(description(ConversionSource::hotkey), "hotkey");
    EXPECT_EQ(description(ConversionSource::manual), "manual");
}

} // namespace
