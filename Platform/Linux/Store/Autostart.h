#pragma once

#include <QString>

namespace platform {

/// Whether the desktop starts the program when the user logs in: an entry in the user's own folder
/// of such entries, where every desktop's settings show it. Main thread only.
class Autostart {
  public:
    /// `path` is that of the entry, and `program` what it starts.
    explicit Autostart(QString path = defaultPath(), QString program = runningProgram());

    /// com.app.pastewise.desktop in autostart in the user's configuration folder.
    [[nodiscard]] static QString defaultPath();

    /// The path of the running program, which stays the same when a package replaces it. Needs a
    /// QCoreApplication.
    [[nodiscard]] static QString runningProgram();

    /// Writes or removes the entry. Returns the reason if that fails, else an empty text; what was
    /// there is then unchanged.
    [[nodiscard]] QString setEnabled(bool isEnabled) const;

  private:
    QString path_;
    QString program_;
};

} // namespace platform
