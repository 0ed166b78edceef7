#include "Pastewise/AppState.h"
#include "tests/Pastewise/AnalyticsTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using namespace testing_support; // NOLINT(google-build-using-namespace)
using foundation::Date;
using foundation::Value;
using pastewise::AnalyticsStateBridge;
using pastewise::AppState;
using pastewise::ConversionSource;
using testing::ElementsAre;
using testing::IsEmpty;
using Write = platform::MemoryUserDefaults::Write;

class AppStateTests : public AnalyticsTest {
  protected:
    AppStateTests() {
        start();
        forgetWhatWasSaid();
    }

    /// Makes the state under test, in place of an earlier one.
    AppState& makeState() {
        state_.reset();
        return state_.emplace(*manager_, defaults_, clock_, center_, loggers_);
    }

    void post(std::optional<Value> object) {
        center_.post({.name = "analyticsSavingsApplied", .object = std::move(object)});
    }

    /// Notes what the state shows before each of its changes from now on.
    void observeChanges() {
        state_->addObjectWillChangeObserver([this] {
            const auto number = [](double value) {
                return std::to_string(static_cast<int>(value));
            };
            changes_.push_back(number(state_->todaySavedSeconds()) + " " +
                               number(state_->lastInteractionSavedSeconds()) + " " +
                               (state_->lastInteractionDate() ? "date" : "none") + " " +
                               state_->lastFlashValue().value_or("none") +
                               (state_->shouldFlashSavings() ? " flashes" : "") +
                               (state_->isPreferencesWindowShown() ? " shown" : ""));
        });
    }

    std::optional<AppState> state_;
    std::vector<std::string> changes_;
};

TEST_F(AppStateTests, StartsWithTheManagersValues) {
    manager_->recordConversion(5, ConversionSource::hotkey);
    manager_->recordConversion(2, ConversionSource::hotkey);
    const AppState& state = makeState();
    EXPECT_FALSE(state.isPreferencesWindowShown());
    EXPECT_EQ(state.todaySavedSeconds(), 70);
    EXPECT_EQ(state.lastInteractionSavedSeconds(), 20);
    EXPECT_EQ(state.lastInteractionDate(), noon);
    EXPECT_EQ(state.lastFlashValue(), std::nullopt);
}

TEST_F(AppStateTests, FlashesByDefaultAndStoresTheDefault) {
    EXPECT_TRUE(makeState().shouldFlashSavings());
    EXPECT_THAT(defaults_.writes(), ElementsAre(Write{std::string(flashKey), true}));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Initializing AppState with shouldFlashSavings = true",
                            "debug: checkPermissions placeholder invoked"));
    EXPECT_EQ(sink_.entries().at(0).format,
              "Initializing AppState with shouldFlashSavings = %{bool,public}d");
    EXPECT_EQ(sink_.entries().at(0).category, "AppState");
}

TEST_F(AppStateTests, KeepsAStoredChoiceNotToFlash) {
    defaults_.setObject(flashKey, false);
    forgetWhatWasSaid();
    EXPECT_FALSE(makeState().shouldFlashSavings());
    EXPECT_THAT(defaults_.writes(), IsEmpty());
    EXPECT_EQ(stored(flashKey), Value(false));
    EXPECT_EQ(sink_.messages().front(),
              "debug: Initializing AppState with shouldFlashSavings = false");
}

TEST_F(AppStateTests, ReadsAStoredTextAsFalseAndKeepsIt) {
    defaults_.setObject(flashKey, "yes");
    EXPECT_FALSE(makeState().shouldFlashSavings());
    EXPECT_EQ(stored(flashKey), Value("yes"));
}

TEST_F(AppStateTests, FlashesACreditAsADuration) {
    makeState();
    post(30.0);
    EXPECT_EQ(state_->lastFlashValue(), "30s");
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 30);
}

TEST_F(AppStateTests, KeepsTheLastFlashWhileFlashingIsOff) {
    makeState();
    post(75.0);
    state_->setShouldFlashSavings(false);
    post(30.0);
    EXPECT_EQ(state_->lastFlashValue(), "1m 15s");
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 30);
}

TEST_F(AppStateTests, TakesTheTotalFromTheManagerAndTheCreditFromTheNotification) {
    makeState();
    manager_->recordConversion(5, ConversionSource::hotkey);
    EXPECT_EQ(state_->todaySavedSeconds(), 50);
    queue_.advance(1h);
    forgetWhatWasSaid();
    post(7.0);
    EXPECT_EQ(state_->todaySavedSeconds(), 50);
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 7);
    EXPECT_EQ(state_->lastInteractionDate(), noon + 1h);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: AppState received analytics update with seconds = 7.000000"));
    EXPECT_EQ(sink_.entries().at(0).format,
              "AppState received analytics update with seconds = %{public}f");
}

TEST_F(AppStateTests, TreatsANotificationWithoutANumberAsACreditOfZero) {
    for (const std::optional<Value>& object :
         {std::optional<Value>(), std::optional<Value>("30")}) {
        makeState();
        post(30.0);
        queue_.advance(1h);
        post(object);
        EXPECT_EQ(state_->lastInteractionSavedSeconds(), 0);
        EXPECT_EQ(state_->lastInteractionDate(), clock_.now());
        EXPECT_EQ(state_->lastFlashValue(), "30s");
        EXPECT_EQ(sink_.messages().back(),
                  "debug: AppState received analytics update with seconds = 0.000000");
    }
}

TEST_F(AppStateTests, TakesAnIntegerAsACredit) {
    makeState();
    post(std::int64_t{30});
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 30);
    EXPECT_EQ(state_->lastFlashValue(), "30s");
}

TEST_F(AppStateTests, DoesNotFlashANegativeCredit) {
    makeState();
    post(30.0);
    post(-5.0);
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), -5);
    EXPECT_EQ(state_->lastFlashValue(), "30s");
}

TEST_F(AppStateTests, FollowsACreditFromAnotherThread) {
    makeState();
    queue_.setIsMainThread(false);
    manager_->recordConversion(5, ConversionSource::hotkey);
    queue_.setIsMainThread(true);
    EXPECT_EQ(state_->todaySavedSeconds(), 0);
    queue_.drain();
    EXPECT_EQ(state_->todaySavedSeconds(), 50);
}

TEST_F(AppStateTests, DoesNotFlashTheManagersReset) {
    makeState();
    manager_->recordConversion(5, ConversionSource::hotkey);
    queue_.advance(1h);
    manager_->resetStatistics();
    EXPECT_EQ(state_->lastFlashValue(), "50s");
    EXPECT_EQ(state_->lastInteractionDate(), noon + 1h);
    EXPECT_EQ(state_->todaySavedSeconds(), 0);

    state_->resetStats();
    EXPECT_EQ(state_->lastInteractionDate(), std::nullopt);
    EXPECT_EQ(state_->lastFlashValue(), std::nullopt);
}

TEST_F(AppStateTests, AFullResetClearsEverything) {
    makeState();
    manager_->recordConversion(5, ConversionSource::hotkey);
    forgetWhatWasSaid();
    state_->resetStats();
    EXPECT_EQ(state_->todaySavedSeconds(), 0);
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 0);
    EXPECT_EQ(state_->lastInteractionDate(), std::nullopt);
    EXPECT_EQ(state_->lastFlashValue(), std::nullopt);
    EXPECT_EQ(manager_->todaySavedSeconds(), 0);
    EXPECT_EQ(stored(marchSeventhKey), Value(0.0));
    EXPECT_EQ(stored(lastDateKey), std::nullopt);
    EXPECT_THAT(posted_, ElementsAre(Value(0.0)));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: resetStats requested",
                            "debug: Resetting analytics statistics",
                            "debug: AppState received analytics update with seconds = 0.000000"));
}

TEST_F(AppStateTests, ResetsTodayHereAndInTheManagerButNotInTheSettings) {
    makeState();
    manager_->recordConversion(5, ConversionSource::hotkey);
    forgetWhatWasSaid();
    state_->resetTodayOnly();
    EXPECT_EQ(state_->todaySavedSeconds(), 0);
    EXPECT_EQ(manager_->todaySavedSeconds(), 0);
    EXPECT_EQ(stored(marchSeventhKey), Value(50.0));
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 50);
    EXPECT_EQ(state_->lastInteractionDate(), noon);
    EXPECT_EQ(state_->lastFlashValue(), "50s");
    EXPECT_THAT(defaults_.writes(), IsEmpty());
    EXPECT_THAT(posted_, IsEmpty());
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre("debug: resetTodayOnly requested from settings - only resetting local counter",
                    "debug: Resetting today's local counter only (persistent storage unchanged)"));
}

TEST_F(AppStateTests, RefreshesFromTheManagerAndNotFromTheSettings) {
    makeState();
    manager_->recordConversion(5, ConversionSource::hotkey);
    post(7.0);
    state_->resetTodayOnly();
    manager_->recordConversion(2, ConversionSource::hotkey);
    post(7.0);
    defaults_.setObject(marchSeventhKey, 1000.0);
    queue_.advance(1h);
    forgetWhatWasSaid();
    state_->refreshFromStorage();
    EXPECT_EQ(state_->todaySavedSeconds(), 20);
    EXPECT_EQ(state_->lastInteractionSavedSeconds(), 20);
    EXPECT_EQ(state_->lastInteractionDate(), noon);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Refreshing AppState from persistent analytics storage"));
}

TEST_F(AppStateTests, StoresTheChoiceToFlashAsABoolean) {
    makeState();
    forgetWhatWasSaid();
    state_->setShouldFlashSavings(false);
    EXPECT_FALSE(state_->shouldFlashSavings());
    state_->setShouldFlashSavings(true);
    EXPECT_TRUE(state_->shouldFlashSavings());
    EXPECT_THAT(
        defaults_.writes(),
        ElementsAre(Write{std::string(flashKey), false}, Write{std::string(flashKey), true}));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: setShouldFlashSavings toggled to false",
                            "debug: setShouldFlashSavings toggled to true"));
    EXPECT_EQ(sink_.entries().at(0).format, "setShouldFlashSavings toggled to %{bool,public}d");
}

TEST_F(AppStateTests, AnnouncesEveryChangeBeforeItHappens) {
    makeState();
    observeChanges();
    manager_->recordConversion(5, ConversionSource::hotkey);
    EXPECT_THAT(changes_,
                ElementsAre("0 0 none none flashes",
                            "50 0 none none flashes",
                            "50 50 none none flashes",
                            "50 50 date none flashes"));
    changes_.clear();
    state_->setShouldFlashSavings(false);
    state_->setIsPreferencesWindowShown(true);
    EXPECT_THAT(changes_, ElementsAre("50 50 date 50s flashes", "50 50 date 50s"));
    EXPECT_FALSE(state_->shouldFlashSavings());
    EXPECT_TRUE(state_->isPreferencesWindowShown());
}

TEST_F(AppStateTests, ARefreshIsLoggedThenCopiesTotalCreditAndDateInOrder) {
    defaults_.setObject(marchSeventhKey, 50.0);
    start();
    makeState();
    post(7.0);
    manager_->resetTodayOnly();
    observeChanges();
    journal_->setWhileCalled([this](std::string_view call) { changes_.emplace_back(call); });
    state_->refreshFromStorage();
    EXPECT_THAT(changes_,
                ElementsAre("log debug: Refreshing AppState from persistent analytics storage",
                            "50 7 date 7s flashes",
                            "0 7 date 7s flashes",
                            "0 0 date 7s flashes"));
    EXPECT_EQ(state_->lastInteractionDate(), std::nullopt);
}

TEST_F(AppStateTests, AFullResetClearsTotalCreditDateAndFlashInOrder) {
    makeState();
    center_.addObserver("analyticsSavingsApplied", [this](const auto& notification) {
        if (notification.object == Value(0.0)) {
            manager_->recordConversion(1, ConversionSource::hotkey);
            observeChanges();
        }
    });
    state_->resetStats();
    EXPECT_THAT(changes_,
                ElementsAre("10 10 date 10s flashes",
                            "0 10 date 10s flashes",
                            "0 0 date 10s flashes",
                            "0 0 none 10s flashes"));
    EXPECT_EQ(state_->lastFlashValue(), std::nullopt);
}

TEST_F(AppStateTests, LogsThenTakesThenStoresTheChoiceToFlash) {
    makeState();
    std::vector<std::string> seen;
    journal_->setWhileCalled([&](std::string_view call) {
        seen.push_back(std::string(call) + (state_->shouldFlashSavings() ? ": on" : ": off"));
    });
    state_->setShouldFlashSavings(false);
    EXPECT_THAT(seen,
                ElementsAre("log debug: setShouldFlashSavings toggled to false: on",
                            "store analytics.shouldFlashSavings: off"));
}

TEST_F(AppStateTests, ObservesTheManagerAfterCheckingThePermissions) {
    const auto before = center_.observerCount();
    std::optional<std::size_t> whenChecked;
    journal_->setWhileCalled([&](std::string_view call) {
        if (call == "log debug: checkPermissions placeholder invoked") {
            whenChecked = center_.observerCount();
        }
    });
    makeState();
    EXPECT_EQ(whenChecked, before);
    EXPECT_EQ(center_.observerCount(), before + 1);
}

TEST_F(AppStateTests, DoesNotReceiveNotificationsOnceDestroyed) {
    makeState();
    post(30.0);
    state_.reset();
    forgetWhatWasSaid();
    post(40.0);
    EXPECT_THAT(posted_, ElementsAre(Value(40.0)));
    EXPECT_THAT(sink_.messages(), IsEmpty());
}

TEST_F(AppStateTests, RemovesItsObserver) {
    const auto before = center_.observerCount();
    makeState();
    EXPECT_EQ(center_.observerCount(), before + 1);
    state_.reset();
    EXPECT_EQ(center_.observerCount(), before);
}

TEST_F(AppStateTests, DoesNotReceiveNotificationsPendingAtItsDestruction) {
    makeState();
    queue_.setIsMainThread(false);
    post(30.0);
    queue_.setIsMainThread(true);
    state_.reset();
    forgetWhatWasSaid();
    queue_.drain();
    EXPECT_THAT(posted_, ElementsAre(Value(30.0)));
    EXPECT_THAT(sink_.messages(), IsEmpty());
}

TEST_F(AppStateTests, MayBeDestroyedByAnotherObserverOfTheSameCredit) {
    center_.addObserver("analyticsSavingsApplied", [this](const auto&) { state_.reset(); });
    makeState();
    forgetWhatWasSaid();
    post(30.0);
    EXPECT_FALSE(state_.has_value());
    EXPECT_THAT(sink_.messages(), IsEmpty());
}

TEST_F(AppStateTests, AnotherStateSeesAChoiceOnlyOnceConstructedAgain) {
    makeState();
    std::optional<AppState> other(std::in_place, *manager_, defaults_, clock_, center_, loggers_);
    other->setShouldFlashSavings(false);
    EXPECT_TRUE(state_->shouldFlashSavings());
    manager_->recordConversion(5, ConversionSource::hotkey);
    EXPECT_EQ(state_->lastFlashValue(), "50s");
    EXPECT_EQ(other->lastFlashValue(), std::nullopt);
    EXPECT_EQ(other->todaySavedSeconds(), 50);

    other.reset();
    manager_->recordConversion(2, ConversionSource::hotkey);
    EXPECT_EQ(state_->todaySavedSeconds(), 70);
    EXPECT_FALSE(makeState().shouldFlashSavings());
}

TEST_F(AppStateTests, IsOwnedByTheBridge) {
    {
        AnalyticsStateBridge bridge(*manager_, defaults_, clock_, center_, loggers_);
        manager_->recordConversion(5, ConversionSource::hotkey);
        EXPECT_EQ(bridge.appState.todaySavedSeconds(), 50);
        forgetWhatWasSaid();
    }
    post(1.0);
    EXPECT_THAT(sink_.messages(), IsEmpty());
}

TEST(ContentViewModelTests, IsAnEmptyObservableObject) {
    pastewise::ContentViewModel model;
    const auto token = model.addObjectWillChangeObserver([] { FAIL() << "nothing changes"; });
    model.removeObjectWillChangeObserver(token);
    EXPECT_EQ(sizeof model, sizeof(foundation::ObservableObject));
    EXPECT_TRUE((std::is_base_of_v<foundation::ObservableObject, pastewise::ContentViewModel>));
}

} // namespace
