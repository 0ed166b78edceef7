#pragma once

#include "Platform/UserDefaults.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Settings in memory: they last as long as the object, and each change is recorded with the exact
/// type of what was stored. Main thread only.
class MemoryUserDefaults final : public UserDefaults {
  public:
    /// One change: what was stored under the key, or none for a removal.
    struct Write {
        std::string key;
        std::optional<Object> object;

        bool operator==(const Write&) const = default;
    };

    [[nodiscard]] std::optional<Object> object(std::string_view key) const override;
    void setObject(std::string_view key, Object object) override;
    void removeObject(std::string_view key) override;

    /// Everything that is stored now.
    [[nodiscard]] const std::map<std::string, Object, std::less<>>& contents() const {
        return objects_;
    }

    /// The changes since the beginning or the last call of clearWrites(), oldest first. A removal
    /// of what was not there is recorded too.
    [[nodiscard]] const std::vector<Write>& writes() const { return writes_; }

    /// Forgets which changes there were, not what is stored.
    void clearWrites() { writes_.clear(); }

  private:
    std::map<std::string, Object, std::less<>> objects_;
    std::vector<Write> writes_;
};

} // namespace platform
