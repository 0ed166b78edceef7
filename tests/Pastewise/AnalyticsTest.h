#pragma once

#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Foundation/Value.h"
#include "Pastewise/AnalyticsManager.h"
#include "Platform/Memory/Journal.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryTime.h"
#include "Platform/Memory/MemoryUserDefaults.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

inline constexpr std::string_view lastSecondsKey = "analytics.lastInteractionSavedSeconds";
inline constexpr std::string_view lastDateKey = "analytics.lastInteractionDate";
inline constexpr std::string_view focusKey = "analytics.confirmationRequiresMiroFocus";
inline constexpr std::string_view flashKey = "analytics.shouldFlashSavings";
inline constexpr std::string_view marchSeventhKey = "analytics.todaySavedSeconds.2024-03-07";
inline constexpr std::string_view marchEighthKey = "analytics.todaySavedSeconds.2024-03-08";

/// Noon in UTC on 7 March 2024, a Thursday.
inline constexpr foundation::Date noon =
    std::chrono::sys_days(std::chrono::year(2024) / std::chrono::March / 7) +
    std::chrono::hours(12);

/// The services that the analytics need, in memory. It is noon, and the time zone is UTC.
class AnalyticsTest : public testing::Test {
  protected:
    AnalyticsTest() {
        clock_.setNow(noon);
        center_.addObserver("analyticsSavingsApplied",
                            [this](const foundation::Notification& notification) {
                                posted_.push_back(notification.object);
                            });
    }

    /// Makes the manager as at the start of the program, in place of an earlier one.
    pastewise::AnalyticsManager& start() {
        manager_.reset();
        return manager_.emplace(defaults_, clock_, calendar_, queue_, center_, loggers_);
    }

    /// The value under the key; none if there is none.
    [[nodiscard]] std::optional<foundation::Value> stored(std::string_view key) const {
        return defaults_.object(key);
    }

    void forgetWhatWasSaid() {
        journal_->clear();
        sink_.clear();
        defaults_.clearWrites();
        posted_.clear();
    }

    std::shared_ptr<platform::Journal> journal_ = std::make_shared<platform::Journal>();
    platform::MemoryMainQueue queue_{journal_};
    platform::MemoryClock clock_{queue_};
    platform::MemoryCalendar calendar_;
    platform::MemoryUserDefaults defaults_{journal_};
    platform::MemoryLogSink sink_{journal_};
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    foundation::NotificationCenter center_{queue_};
    /// The objects of all "analyticsSavingsApplied" notifications, oldest first.
    std::vector<std::optional<foundation::Value>> posted_;
    std::optional<pastewise::AnalyticsManager> manager_;
};

} // namespace testing_support
