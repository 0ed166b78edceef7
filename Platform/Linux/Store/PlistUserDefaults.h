#pragma once

#include "Foundation/Logger.h"
#include "Foundation/WeakReference.h"
#include "Platform/Linux/Store/PropertyList.h"
#include "Platform/Linux/Store/SettingsFile.h"
#include "Platform/Linux/Worker.h"
#include "Platform/MainQueue.h"
#include "Platform/UserDefaults.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace platform {

/// The settings in a binary property list of the user's, which is read once, when the object is
/// made, and replaced as a whole soon after the turn of the event loop that changed something. What
/// others write into it meanwhile is lost at the next change.
///
/// The worker does the writing: a disk takes its time to say that it has the data, and other
/// programs are waiting for the event loop. A change waits until the one before it, of an earlier
/// turn, is on the disk, so that a crash costs the last turn's changes at most.
///
/// A file that cannot be read is moved aside, never overwritten, and the settings begin empty.
/// Where it cannot even be moved, nothing is written for as long as the object lives. What fails is
/// said in the log, with paths but without values; what could not be written is tried again at the
/// next change and at the end.
///
/// Main thread only. The queue, the worker and the log outlive the object.
class PlistUserDefaults final : public UserDefaults {
  public:
    /// The file's path ends in a folder and a name; folders that are missing are made when needed.
    PlistUserDefaults(std::filesystem::path path,
                      MainQueue& queue,
                      Worker& worker,
                      const foundation::LoggerFactory& loggers);

    /// Writes what is not written yet.
    ~PlistUserDefaults() override;

    /// pastewise/com.app.pastewise.plist in the user's configuration folder, which is
    /// $XDG_CONFIG_HOME or ~/.config. Empty, a path that can be neither read nor written, when the
    /// user has no home.
    [[nodiscard]] static std::filesystem::path defaultPath();

    [[nodiscard]] std::optional<foundation::Value> object(std::string_view key) const override;
    void setObject(std::string_view key, foundation::Value value) override;
    void removeObject(std::string_view key) override;

    /// Has everything on the disk when it returns, for when the program may not come to the next
    /// turn.
    void flush();

  private:
    void load();
    void didChange();
    void write();
    void finishWriting();

    SettingsFile file_;
    MainQueue& queue_;
    Worker& worker_;
    foundation::Logger logger_;
    PropertyList settings_;
    bool mayWrite_ = true;
    bool hasUnwrittenChanges_ = false;
    bool isWriteQueued_ = false;
    /// What the worker was given and has not been asked about; it sets the error before it is done.
    bool isWriting_ = false;
    std::error_code writeError_;
    foundation::WeakReferenceSource<PlistUserDefaults> weakSelf_{this};
};

} // namespace platform
