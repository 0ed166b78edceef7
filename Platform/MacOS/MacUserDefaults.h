#pragma once

#import "Platform/MacOS/MacConversions.h"
#include "Platform/UserDefaults.h"

#include <optional>

namespace platform {

/// The program's settings in the system's own store, which saves each change by itself. Main
/// thread only.
class MacUserDefaults final : public UserDefaults {
  public:
    explicit MacUserDefaults(NSUserDefaults* defaults) : defaults_(defaults) {}

    [[nodiscard]] std::optional<foundation::Value> object(std::string_view key) const override {
        const id object = [defaults_ objectForKey:nsString(key)];
        return object != nil ? std::optional(valueOf(object)) : std::nullopt;
    }

    void setObject(std::string_view key, foundation::Value value) override {
        if (const id stored = nsObject(value)) {
            [defaults_ setObject:stored forKey:nsString(key)];
        }
    }

    void removeObject(std::string_view key) override {
        [defaults_ removeObjectForKey:nsString(key)];
    }

  private:
    NSUserDefaults* const defaults_;
};

} // namespace platform
