#include "Platform/Linux/Store/PlistUserDefaults.h"

#include "Platform/Linux/Store/PropertyListBounds.h"

#include <pwd.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// The folder that the variable names; none when it is unset or not absolute.
std::optional<fs::path> folderFrom(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value != '/') {
        return std::nullopt;
    }
    return value;
}

std::optional<fs::path> homeFolder() {
    if (auto home = folderFrom("HOME")) {
        return home;
    }
    const passwd* user = getpwuid(getuid());
    if (user == nullptr || user->pw_dir == nullptr || *user->pw_dir != '/') {
        return std::nullopt;
    }
    return user->pw_dir;
}

} // namespace

PlistUserDefaults::PlistUserDefaults(fs::path path,
                                     MainQueue& queue,
                                     Worker& worker,
                                     const foundation::LoggerFactory& loggers)
    : file_(std::move(path)),
      queue_(queue),
      worker_(worker),
      logger_(loggers.logger("PlistUserDefaults")) {
    load();
}

PlistUserDefaults::~PlistUserDefaults() {
    flush();
}

fs::path PlistUserDefaults::defaultPath() {
    auto folder = folderFrom("XDG_CONFIG_HOME");
    if (!folder) {
        const auto home = homeFolder();
        if (!home) {
            return {};
        }
        folder = *home / ".config";
    }
    return *folder / "pastewise" / "com.app.pastewise.plist";
}

void PlistUserDefaults::load() {
    const SettingsFile::Contents contents = file_.read(PropertyListBounds::maxFileSize);
    std::string reason;
    if (contents.error) {
        reason = contents.error.message();
    } else if (!contents.bytes) {
        return;
    } else if (auto settings = PropertyList::parse(*contents.bytes)) {
        settings_ = std::move(*settings);
        return;
    } else {
        reason = "not a property list of settings";
    }
    const SettingsFile::SetAside kept = file_.setAside(std::chrono::system_clock::now());
    if (kept.error) {
        mayWrite_ = false;
        logger_.error("The settings in %{public}s cannot be read (%{public}s) nor moved aside "
                      "(%{public}s): no settings will be saved",
                      file_.path().native(),
                      reason,
                      kept.error.message());
        return;
    }
    logger_.error("The settings in %{public}s cannot be read (%{public}s): kept as %{public}s",
                  file_.path().native(),
                  reason,
                  kept.path.native());
}

std::optional<foundation::Value> PlistUserDefaults::object(std::string_view key) const {
    return settings_.object(key);
}

void PlistUserDefaults::setObject(std::string_view key, foundation::Value value) {
    if (settings_.setObject(key, value)) {
        didChange();
    }
}

void PlistUserDefaults::removeObject(std::string_view key) {
    if (settings_.removeObject(key)) {
        didChange();
    }
}

void PlistUserDefaults::didChange() {
    hasUnwrittenChanges_ = true;
    if (isWriteQueued_) {
        return;
    }
    finishWriting();
    isWriteQueued_ = true;
    queue_.async([weakSelf = weakSelf_.reference()] {
        if (PlistUserDefaults* self = weakSelf.get()) {
            self->isWriteQueued_ = false;
            self->write();
        }
    });
}

void PlistUserDefaults::flush() {
    finishWriting();
    write();
    finishWriting();
}

void PlistUserDefaults::write() {
    if (!hasUnwrittenChanges_ || !mayWrite_) {
        return;
    }
    auto bytes = settings_.serialize();
    if (!bytes) {
        logger_.error("The settings cannot be saved in %{public}s: there are too many",
                      file_.path().native());
        return;
    }
    hasUnwrittenChanges_ = false;
    isWriting_ = true;
    worker_.perform([this, bytes = std::move(*bytes)] {
        try {
            writeError_ = file_.write(bytes);
        } catch (const std::bad_alloc&) {
            writeError_ = std::make_error_code(std::errc::not_enough_memory);
        }
        if (writeError_) {
            logger_.error("The settings cannot be saved in %{public}s: %{public}s",
                          file_.path().native(),
                          writeError_.message());
        }
    });
}

void PlistUserDefaults::finishWriting() {
    if (!isWriting_) {
        return;
    }
    worker_.waitUntilDone();
    isWriting_ = false;
    if (writeError_) {
        hasUnwrittenChanges_ = true;
    }
}

} // namespace platform
