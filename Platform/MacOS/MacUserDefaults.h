#pragma once

#import "Platform/MacOS/MacConversions.h"
#include "Platform/UserDefaults.h"

#include <chrono>
#include <cmath>

namespace platform {

/// The settings as the system keeps them for this program: its daemon has a change as soon as it
/// was made. What cannot be stored changes nothing. Main thread only.
class MacUserDefaults final : public UserDefaults {
  public:
    explicit MacUserDefaults(NSUserDefaults* defaults) : defaults_(defaults) {}

    [[nodiscard]] std::optional<Object> object(std::string_view key) const override {
        const id object = [defaults_ objectForKey:nsString(key)];
        if (object == nil) {
            return std::nullopt;
        }
        if ([object isKindOfClass:[NSDate class]]) {
            return dateOf(object);
        }
        if ([object isKindOfClass:[NSDictionary class]]) {
            return dictionaryOf(object);
        }
        if (const auto value = valueOf(object)) {
            return std::visit([](const auto& scalar) { return Object(scalar); }, *value);
        }
        return Other{};
    }

    void setObject(std::string_view key, Object object) override {
        if (const id stored = std::visit(Storer{}, object)) {
            [defaults_ setObject:stored forKey:nsString(key)];
        }
    }

    void removeObject(std::string_view key) override {
        [defaults_ removeObjectForKey:nsString(key)];
    }

  private:
    using Seconds = std::chrono::duration<double>;

    struct Storer {
        id operator()(Other /*object*/) const { return nil; }

        id operator()(foundation::Date date) const {
            return [NSDate dateWithTimeIntervalSince1970:Seconds(date.time_since_epoch()).count()];
        }

        id operator()(const foundation::Dictionary& values) const { return nsDictionary(values); }

        template <typename Scalar>
        id operator()(const Scalar& value) const {
            return nsObject(foundation::Value(value));
        }
    };

    /// Other where the date is further away than a Date can tell.
    static Object dateOf(NSDate* date) {
        const Seconds time(date.timeIntervalSince1970);
        constexpr Seconds limit = std::chrono::microseconds::max();
        if (!(std::abs(time.count()) < limit.count())) {
            return Other{};
        }
        return foundation::Date(std::chrono::round<std::chrono::microseconds>(time));
    }

    NSUserDefaults* const defaults_;
};

} // namespace platform
