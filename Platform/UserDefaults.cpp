#include "Platform/UserDefaults.h"

#include <variant>

namespace platform {

using foundation::Value;

namespace {

template <typename Type>
std::optional<Type> valueOfType(const std::optional<Value>& value) {
    const Type* held = value ? std::get_if<Type>(&*value) : nullptr;
    return held != nullptr ? std::optional(*held) : std::nullopt;
}

} // namespace

double UserDefaults::doubleForKey(std::string_view key) const {
    return foundation::doubleValue(object(key).value_or(Value())).value_or(0);
}

bool UserDefaults::boolForKey(std::string_view key) const {
    return foundation::boolValue(object(key).value_or(Value())).value_or(false);
}

std::optional<foundation::Date> UserDefaults::dateForKey(std::string_view key) const {
    return valueOfType<foundation::Date>(object(key));
}

std::optional<foundation::Dictionary> UserDefaults::dictionaryForKey(std::string_view key) const {
    return valueOfType<foundation::Dictionary>(object(key));
}

} // namespace platform
