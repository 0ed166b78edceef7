#include "Platform/Memory/MemoryTime.h"

namespace platform {

DateComponents MemoryCalendar::dateComponents(foundation::Date date) const {
    const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(date + utcOffset_));
    DateComponents components;
    if (!leftOut_.contains(Component::year)) {
        components.year = static_cast<int>(day.year());
    }
    if (!leftOut_.contains(Component::month)) {
        components.month = static_cast<int>(static_cast<unsigned>(day.month()));
    }
    if (!leftOut_.contains(Component::day)) {
        components.day = static_cast<int>(static_cast<unsigned>(day.day()));
    }
    return components;
}

} // namespace platform
