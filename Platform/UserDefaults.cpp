#include "Platform/UserDefaults.h"

#include <type_traits>

namespace platform {

namespace {

/// The object as a number or string; none when it is neither.
std::optional<foundation::Value> scalar(const std::optional<UserDefaults::Object>& object) {
    if (!object) {
        return std::nullopt;
    }
    return std::visit(
        [](const auto& held) -> std::optional<foundation::Value> {
            if constexpr (std::is_constructible_v<foundation::Value, decltype(held)>) {
                return foundation::Value(held);
            } else {
                return std::nullopt;
            }
        },
        *object);
}

template <typename Type>
std::optional<Type> objectOfType(const std::optional<UserDefaults::Object>& object) {
    const Type* held = object ? std::get_if<Type>(&*object) : nullptr;
    return held != nullptr ? std::optional(*held) : std::nullopt;
}

} // namespace

double UserDefaults::doubleForKey(std::string_view key) const {
    const auto value = scalar(object(key));
    return value ? foundation::doubleValue(*value).value_or(0) : 0;
}

bool UserDefaults::boolForKey(std::string_view key) const {
    const auto value = scalar(object(key));
    return value && foundation::boolValue(*value).value_or(false);
}

std::optional<foundation::Date> UserDefaults::dateForKey(std::string_view key) const {
    return objectOfType<foundation::Date>(object(key));
}

std::optional<foundation::Dictionary> UserDefaults::dictionaryForKey(std::string_view key) const {
    return objectOfType<foundation::Dictionary>(object(key));
}

} // namespace platform
