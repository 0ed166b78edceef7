#include "Platform/Linux/LinuxServices.h"

#include <chrono>
#include <ctime>

namespace platform {

DateComponents LocalCalendar::dateComponents(foundation::Date date) const {
    // localtime_r need not notice a changed time zone by itself.
    tzset();
    const std::time_t seconds =
        std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr) {
        return {};
    }
    return {.year = local.tm_year + 1900, .month = local.tm_mon + 1, .day = local.tm_mday};
}

} // namespace platform
