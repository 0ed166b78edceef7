#include "Platform/Linux/Store/Autostart.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <utility>

namespace platform {

namespace {

/// As a word of an Exec line: quoted for its command line, and that again for a value of the file.
QString quotedForExec(const QString& word) {
    QString quoted;
    for (const QChar character : word) {
        if (QString("\"`$\\").contains(character)) {
            quoted += '\\';
        }
        quoted += character;
        if (character == '%') {
            quoted += character;
        }
    }
    return '"' + quoted.replace("\\", "\\\\") + '"';
}

} // namespace

Autostart::Autostart(QString path, QString program)
    : path_(std::move(path)), program_(std::move(program)) {}

QString Autostart::defaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) +
           "/autostart/com.app.pastewise.desktop";
}

QString Autostart::runningProgram() {
    return QCoreApplication::applicationFilePath();
}

QString Autostart::setEnabled(bool isEnabled) const {
    if (!isEnabled) {
        QFile file(path_);
        return !file.exists() || file.remove() ? QString() : file.errorString();
    }
    QDir().mkpath(QFileInfo(path_).path());
    QSaveFile file(path_);
    const QString entry = "[Desktop Entry]\n"
                          "Type=Application\n"
                          "Version=1.4\n"
                          "Name=Pastewise\n"
                          "Comment=Paste a copied list into the Miro whiteboard as sticky notes\n"
                          "Exec=" +
                          quotedForExec(program_) +
                          "\n"
                          "Icon=com.app.pastewise\n"
                          "Terminal=false\n"
                          "StartupNotify=false\n";
    if (file.open(QIODevice::WriteOnly)) {
        file.write(entry.toUtf8());
        if (file.commit()) {
            return {};
        }
    }
    return file.errorString();
}

} // namespace platform
