#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace program_test {

/// The program's settings file as it was when it was read, independently of the program's parser.
class StoredSettings {
  public:
    /// nullopt unless the file is complete.
    [[nodiscard]] static std::optional<StoredSettings> read(const std::filesystem::path& path);

    [[nodiscard]] bool holds(const std::string& key) const;

    /// The sum over all days, which midnight does not change.
    [[nodiscard]] double savedSeconds() const;

    struct Shortcut {
        std::uint64_t keyCode = 0;
        std::uint64_t modifiers = 0;
        bool operator==(const Shortcut&) const = default;
    };

    [[nodiscard]] std::optional<Shortcut> shortcut() const;

  private:
    explicit StoredSettings(std::string xml) : xml_(std::move(xml)) {}

    std::string xml_;
};

} // namespace program_test
