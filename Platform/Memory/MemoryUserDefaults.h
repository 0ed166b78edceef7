#pragma once

#include "Platform/Memory/Journal.h"
#include "Platform/UserDefaults.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Settings that last as long as the object and record each change. They store foundation::Other
/// too, as a stand-in for what only another program stores. Main thread only.
class MemoryUserDefaults final : public UserDefaults, public Journaled {
  public:
    /// One change: what was stored under the key, or none for a removal.
    struct Write {
        std::string key;
        std::optional<foundation::Value> value;

        bool operator==(const Write&) const = default;
    };

    using Journaled::Journaled;

    [[nodiscard]] std::optional<foundation::Value> object(std::string_view key) const override {
        note("read", key);
        const auto found = contents_.find(key);
        return found == contents_.end() ? std::nullopt : std::optional(found->second);
    }

    void setObject(std::string_view key, foundation::Value value) override {
        note("store", key);
        writes_.push_back({.key = std::string(key), .value = value});
        contents_.insert_or_assign(std::string(key), std::move(value));
    }

    void removeObject(std::string_view key) override {
        note("remove", key);
        writes_.push_back({.key = std::string(key), .value = std::nullopt});
        contents_.erase(std::string(key));
    }

    [[nodiscard]] const foundation::Dictionary& contents() const { return contents_; }

    /// The changes since the start or the last clearWrites(), oldest first, including removals of
    /// keys that did not exist.
    [[nodiscard]] const std::vector<Write>& writes() const { return writes_; }

    void clearWrites() { writes_.clear(); }

  private:
    foundation::Dictionary contents_;
    std::vector<Write> writes_;
};

} // namespace platform
