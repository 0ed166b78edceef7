#pragma once

#include <plist/plist.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace program_test {

/// What the file of the program's settings held when it was read: by another reader of property
/// lists than the program's own code.
class StoredSettings {
  public:
    /// None when there is no file or it is not, from its first to its last byte, a property list
    /// with a dictionary.
    [[nodiscard]] static std::optional<StoredSettings> read(const std::filesystem::path& path);

    [[nodiscard]] bool holds(const std::string& key) const;

    /// The seconds saved on all days together, so that midnight makes no difference.
    [[nodiscard]] double savedSeconds() const;

    /// The shortcut that the user set.
    struct Shortcut {
        std::uint64_t keyCode = 0;
        std::uint64_t modifiers = 0;
        bool operator==(const Shortcut&) const = default;
    };

    [[nodiscard]] std::optional<Shortcut> shortcut() const;

  private:
    struct Free {
        void operator()(void* list) const { plist_free(list); }
    };

    using List = std::unique_ptr<void, Free>;

    explicit StoredSettings(List list) : list_(std::move(list)) {}

    List list_;
};

} // namespace program_test
