#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Value.h"

#include <optional>
#include <string_view>

namespace platform {

/// The program's persistent settings: values under names in UTF-8. Main thread only.
///
/// Reads see a change at once. It is saved for later runs soon afterwards, at the latest when the
/// program ends. No operation fails towards the caller: a backend that cannot save says so in the
/// log. What cannot be stored changes nothing: foundation::Other, and a dictionary that holds it.
class UserDefaults : public foundation::Interface {
  public:
    /// The value under the key, with the type that it was stored with; none if there is none. A
    /// system may return a number that is not negative as a signed or as an unsigned integer.
    [[nodiscard]] virtual std::optional<foundation::Value> object(std::string_view key) const = 0;

    virtual void setObject(std::string_view key, foundation::Value value) = 0;

    /// Does nothing if there is no such key.
    virtual void removeObject(std::string_view key) = 0;

    /// The number under the key; 0 if there is no number.
    [[nodiscard]] double doubleForKey(std::string_view key) const;

    /// Whether the number under the key is other than zero; false if there is no number.
    [[nodiscard]] bool boolForKey(std::string_view key) const;

    /// The date under the key; none if there is no date.
    [[nodiscard]] std::optional<foundation::Date> dateForKey(std::string_view key) const;

    /// The dictionary under the key; none if there is no dictionary.
    [[nodiscard]] std::optional<foundation::Dictionary>
    dictionaryForKey(std::string_view key) const;
};

} // namespace platform
