#include "Platform/Memory/MemoryUserDefaults.h"

#include <utility>

namespace platform {

std::optional<UserDefaults::Object> MemoryUserDefaults::object(std::string_view key) const {
    const auto found = objects_.find(key);
    return found == objects_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryUserDefaults::setObject(std::string_view key, Object object) {
    writes_.push_back({.key = std::string(key), .object = object});
    objects_.insert_or_assign(std::string(key), std::move(object));
}

void MemoryUserDefaults::removeObject(std::string_view key) {
    writes_.push_back({.key = std::string(key), .object = std::nullopt});
    const auto found = objects_.find(key);
    if (found != objects_.end()) {
        objects_.erase(found);
    }
}

} // namespace platform
