#pragma once

#include "Foundation/Logger.h"
#include "Foundation/WeakReference.h"
#include "Platform/Linux/Store/PropertyList.h"
#include "Platform/MainQueue.h"
#include "Platform/UserDefaults.h"

#include <QString>
#include <QThreadPool>
#include <atomic>
#include <optional>
#include <string_view>

namespace platform {

/// The settings in an XML property list, which is read once, by the constructor, and replaced as a
/// whole after each turn of the event loop that changed something. What others write into it
/// meanwhile is lost at the next change.
///
/// The disk's thread writes one change after the other, so that a slow disk does not stop the event
/// loop. A crash or a power cut leaves the file as it was before or after a change.
///
/// A file that is not a property list is moved aside, never overwritten, and the settings start
/// empty. One that cannot be read or moved is left alone, and nothing is written for the life of
/// the object. A failed write is repeated at the next change and by flush(). Failures are logged
/// with paths but without values, those of writes only after a success in between.
///
/// Main thread only. What the constructor refers to outlives the object.
class FileUserDefaults final : public UserDefaults {
  public:
    /// `disk` is limited to one thread. If the path is a symbolic link, the file behind it is read
    /// and replaced. Temporary files of a process killed while it wrote are removed; another
    /// instance, on a host that shares the folder, might fail to save once.
    FileUserDefaults(const QString& path,
                     MainQueue& queue,
                     QThreadPool& disk,
                     const foundation::LoggerFactory& loggers);

    /// Waits until everything is on the disk.
    ~FileUserDefaults() override;

    /// pastewise/com.app.pastewise.plist in $XDG_CONFIG_HOME or ~/.config.
    [[nodiscard]] static QString defaultPath();

    [[nodiscard]] std::optional<foundation::Value> object(std::string_view key) const override;
    void setObject(std::string_view key, foundation::Value value) override;
    void removeObject(std::string_view key) override;

    /// Waits until everything is on the disk, but only a few seconds.
    void flush();

  private:
    void load();
    void didChange();
    void write();

    const QString file_;
    MainQueue& queue_;
    QThreadPool& disk_;
    const foundation::Logger logger_;
    PropertyList settings_;
    bool mayWrite_ = true;
    bool hasUnwrittenChanges_ = false;
    std::atomic<bool> hasLastWriteFailed_ = false; // Set by the disk's thread.
    foundation::WeakReferenceSource<FileUserDefaults> weakSelf_{this};
};

} // namespace platform
