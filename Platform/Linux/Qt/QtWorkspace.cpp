#include "Platform/Linux/Qt/QtWorkspace.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

namespace platform {

bool QtWorkspace::openURL(const std::string& url) {
    const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
    return parsed.isValid() && !parsed.isRelative() && QDesktopServices::openUrl(parsed);
}

} // namespace platform
