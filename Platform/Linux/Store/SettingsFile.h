#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// A small file of the user's that is only ever replaced as a whole, so that a crash or a power cut
/// leaves the old one or the new one. Where the path is a symbolic link, the file that it leads to
/// is meant and the link stays. Nothing throws but allocation.
class SettingsFile {
  public:
    explicit SettingsFile(std::filesystem::path path) : path_(std::move(path)) {}

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// What the file holds. Neither bytes nor an error: there is no file yet.
    struct Contents {
        std::optional<std::string> bytes;
        std::error_code error;
    };

    /// An error also for what is no regular file and for one of more than `maxSize` bytes.
    [[nodiscard]] Contents read(std::size_t maxSize) const;

    /// Replaces the file and has it on the disk when this returns, readable for the user alone.
    /// Folders that are missing are made. After a failure the old file is there unchanged.
    [[nodiscard]] std::error_code write(std::string_view bytes) const;

    /// Moves whatever is in the file's place to a name beside it that says when it was found
    /// damaged, in UTC, and that nothing had before. The new path, or the error.
    struct SetAside {
        std::filesystem::path path;
        std::error_code error;
    };

    [[nodiscard]] SetAside setAside(std::chrono::system_clock::time_point now) const;

  private:
    [[nodiscard]] std::filesystem::path target() const;

    std::filesystem::path path_;
};

} // namespace platform
