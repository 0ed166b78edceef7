#include "Platform/Linux/Store/SettingsFile.h"

#include "Foundation/Interface.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace platform {

namespace {

namespace fs = std::filesystem;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

class Descriptor : foundation::Pinned {
  public:
    explicit Descriptor(int number) : number_(number) {}

    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    [[nodiscard]] int number() const { return number_; }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }

  private:
    int number_;
};

std::error_code makeFolder(const fs::path& folder) {
    if (mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST) {
        return {};
    }
    const fs::path parent = folder.parent_path();
    if (errno != ENOENT || parent == folder || parent.empty()) {
        return lastError();
    }
    if (const std::error_code error = makeFolder(parent)) {
        return error;
    }
    return mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST ? std::error_code() : lastError();
}

std::error_code writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
    return fsync(descriptor) == 0 ? std::error_code() : lastError();
}

/// Moves without ever replacing what has the new name.
std::error_code moveToFreeName(const fs::path& from, const fs::path& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return lastError();
    }

    // Not every file system can promise it; nobody else makes such names.
    struct stat status {};

    if (lstat(to.c_str(), &status) == 0) {
        return std::make_error_code(std::errc::file_exists);
    }
    return rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : lastError();
}

} // namespace

/// The path at the end of the symbolic links; the path itself where they lead in a circle.
fs::path SettingsFile::target() const {
    constexpr int maxLinks = 40;
    fs::path target = path_;
    for (int count = 0; count < maxLinks; ++count) {
        std::error_code isNoLink;
        const fs::path next = fs::read_symlink(target, isNoLink);
        if (isNoLink) {
            return target;
        }
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return path_;
}

SettingsFile::Contents SettingsFile::read(std::size_t maxSize) const {
    // Opening a pipe would wait for somebody to write into it.
    const Descriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        // No folder can stand behind what is no folder.
        if (errno == ENOENT || errno == ENOTDIR) {
            return {};
        }
        return {.bytes = std::nullopt, .error = lastError()};
    }

    struct stat status {};

    if (fstat(file.number(), &status) != 0) {
        return {.bytes = std::nullopt, .error = lastError()};
    }
    if (!S_ISREG(status.st_mode)) {
        const auto kind =
            S_ISDIR(status.st_mode) ? std::errc::is_a_directory : std::errc::not_supported;
        return {.bytes = std::nullopt, .error = std::make_error_code(kind)};
    }
    std::string bytes;
    std::array<char, 16384> chunk{};
    for (;;) {
        const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
        if (count == 0) {
            return {.bytes = std::move(bytes), .error = {}};
        }
        if (count > 0) {
            bytes.append(chunk.data(), static_cast<std::size_t>(count));
            if (bytes.size() > maxSize) {
                return {.bytes = std::nullopt,
                        .error = std::make_error_code(std::errc::file_too_large)};
            }
        } else if (errno != EINTR) {
            return {.bytes = std::nullopt, .error = lastError()};
        }
    }
}

std::error_code SettingsFile::write(std::string_view bytes) const {
    const fs::path file = target();
    const fs::path folder = file.parent_path();
    if (folder.empty()) {
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }
    if (const std::error_code error = makeFolder(folder)) {
        return error;
    }
    std::string temporary = file.string() + ".XXXXXX";
    const Descriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC)); // with mode 0600
    if (!descriptor.isOpen()) {
        return lastError();
    }
    std::error_code error = writeAll(descriptor.number(), bytes);
    if (!error && rename(temporary.c_str(), file.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        unlink(temporary.c_str());
        return error;
    }
    // The file is in its place whatever becomes of this: only a power cut could still undo it.
    const Descriptor openFolder(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (openFolder.isOpen()) {
        fsync(openFolder.number());
    }
    return {};
}

SettingsFile::SetAside SettingsFile::setAside(std::chrono::system_clock::time_point now) const {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    std::array<char, 32> stamp{};
    if (std::strftime(stamp.data(), stamp.size(), "%Y%m%dT%H%M%S", &utc) == 0) {
        stamp.front() = '\0';
    }
    const fs::path damaged = target();
    const std::string firstName = damaged.string() + ".damaged-" + stamp.data();
    constexpr int maxAttempts = 1000;
    std::error_code error;
    for (int attempt = 1; attempt <= maxAttempts; ++attempt) {
        const fs::path name = attempt == 1 ? firstName : firstName + "-" + std::to_string(attempt);
        error = moveToFreeName(damaged, name);
        if (error != std::errc::file_exists) {
            return {.path = name, .error = error};
        }
    }
    return {.path = {}, .error = error};
}

} // namespace platform
