#include "Platform/Linux/Store/FileUserDefaults.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace platform {

namespace {

/// Part of a temporary file's name, and of no name that a user would give a copy of the settings.
constexpr const char* temporarySuffix = ".saving-";

QString fileBehindLinks(const QString& path) {
    QFileInfo file(path);
    constexpr int maxLinks = 40;
    for (int count = 0; count < maxLinks && file.isSymLink(); ++count) {
        file.setFile(file.symLinkTarget());
    }
    return file.filePath();
}

/// What a file holds, or why it cannot be read; neither if there is none.
struct Contents {
    std::optional<QByteArray> bytes;
    std::string error;
};

Contents read(const QString& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path.toStdString(), error);
    if (status.type() == fs::file_type::not_found) {
        return {};
    }
    if (!fs::is_regular_file(status)) {
        return {.bytes = {}, .error = error ? error.message() : "not a regular file"};
    }
    constexpr qint64 maxSize = qint64{16} << 20U; // The settings of centuries.
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.read(maxSize) : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        return {.bytes = {}, .error = file.errorString().toStdString()};
    }
    return {.bytes = bytes, .error = {}};
}

/// Returns why it failed, in which case the old file is unchanged; empty on success. The new file,
/// and folders that were missing, are accessible to the user alone.
std::string replace(const QString& path, const QByteArray& bytes) {
    const std::filesystem::path file = path.toStdString();
    std::filesystem::path folder;
    for (const auto& part : file.parent_path()) {
        folder /= part;
        if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
            return std::generic_category().message(errno);
        }
    }
    // QSaveFile ignores errors of synchronisation, and a user may choose names like its own.
    QTemporaryFile temporary(path + temporarySuffix + "XXXXXX");
    if (!temporary.open() || temporary.write(bytes) != bytes.size() || !temporary.flush()) {
        return temporary.errorString().toStdString();
    }
    if (fdatasync(temporary.handle()) != 0 ||
        std::rename(temporary.fileName().toStdString().c_str(), file.c_str()) != 0) {
        return std::generic_category().message(errno);
    }
    return {};
}

void removeTemporaryFiles(const QString& path) {
    const QFileInfo file(path);
    const QStringList names(file.fileName() + temporarySuffix + u'*');
    for (const QFileInfo& temporary : file.dir().entryInfoList(names, QDir::Files)) {
        QFile::remove(temporary.filePath());
    }
}

} // namespace

FileUserDefaults::FileUserDefaults(const QString& path,
                                   MainQueue& queue,
                                   QThreadPool& disk,
                                   const foundation::LoggerFactory& loggers)
    : file_(fileBehindLinks(path)),
      queue_(queue),
      disk_(disk),
      logger_(loggers.logger("FileUserDefaults")) {
    disk_.setMaxThreadCount(1);
    load();
    removeTemporaryFiles(file_);
}

FileUserDefaults::~FileUserDefaults() {
    flush();
    disk_.waitForDone();
}

QString FileUserDefaults::defaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) +
           "/pastewise/com.app.pastewise.plist";
}

void FileUserDefaults::load() {
    const std::string path = file_.toStdString();
    const Contents contents = read(file_);
    if (!contents.error.empty()) {
        mayWrite_ = false;
        logger_.error(
            "The settings in %{public}s cannot be read (%{public}s): no settings will be saved",
            path,
            contents.error);
        return;
    }
    auto settings = contents.bytes ? parsePropertyList(*contents.bytes) : PropertyList();
    if (settings) {
        settings_ = std::move(*settings);
        return;
    }
    // rename() never replaces a file that has the name already.
    const QString kept =
        file_ + QDateTime::currentDateTimeUtc().toString("'.damaged-'yyyyMMddTHHmmsszzz");
    mayWrite_ = QFile::rename(file_, kept);
    if (mayWrite_) {
        logger_.error("The settings in %{public}s are not a property list: kept as %{public}s",
                      path,
                      kept.toStdString());
    } else {
        logger_.error("The settings in %{public}s are not a property list and cannot be moved: "
                      "no settings will be saved",
                      path);
    }
}

std::optional<foundation::Value> FileUserDefaults::object(std::string_view key) const {
    const auto found = settings_.find(key);
    return found == settings_.end() ? std::nullopt
                                    : std::optional(propertyListValue(found->second));
}

void FileUserDefaults::setObject(std::string_view key, foundation::Value value) {
    const QString element = propertyListElement(value);
    const bool isStorable = !element.isEmpty() && !propertyListElement(std::string(key)).isEmpty();
    if (isStorable && std::exchange(settings_[std::string(key)], element) != element) {
        didChange();
    }
}

void FileUserDefaults::removeObject(std::string_view key) {
    if (settings_.erase(std::string(key)) != 0) {
        didChange();
    }
}

void FileUserDefaults::didChange() {
    if (std::exchange(hasUnwrittenChanges_, true)) {
        return;
    }
    queue_.async([weakSelf = weakSelf_.reference()] {
        FileUserDefaults* self = weakSelf.get();
        if (self != nullptr && self->hasUnwrittenChanges_) {
            self->write();
        }
    });
}

void FileUserDefaults::write() {
    hasUnwrittenChanges_ = false;
    if (!mayWrite_) {
        return;
    }
    disk_.start([this, settings = settings_] {
        const std::string error = replace(file_, serializePropertyList(settings));
        const bool hasFailedBefore = hasLastWriteFailed_.exchange(!error.empty());
        if (!error.empty() && !hasFailedBefore) {
            logger_.error("The settings cannot be saved in %{public}s: %{public}s",
                          file_.toStdString(),
                          error);
        }
    });
}

void FileUserDefaults::flush() {
    if (hasUnwrittenChanges_ || hasLastWriteFailed_) {
        write();
    }
    constexpr int patienceInMilliseconds = 2000;
    if (!disk_.waitForDone(patienceInMilliseconds)) {
        logger_.error("The settings cannot be saved in %{public}s: the disk does not respond",
                      file_.toStdString());
    }
}

} // namespace platform
