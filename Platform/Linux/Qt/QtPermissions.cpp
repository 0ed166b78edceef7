#include "Platform/Linux/Qt/QtPermissions.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace platform {

std::optional<std::size_t> QtAlerts::runModal(const Alert& alert) {
    QMessageBox box(QMessageBox::Warning, {}, QString::fromStdString(alert.messageText));
    box.setInformativeText(QString::fromStdString(alert.informativeText));
    for (const std::string& title : alert.buttonTitles) {
        // Desktops order buttons by role; those of one role stay in the order given.
        box.addButton(QString::fromStdString(title), QMessageBox::ActionRole);
    }
    box.exec();
    const auto chosen = box.buttons().indexOf(box.clickedButton());
    return chosen < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(chosen));
}

bool QtWorkspace::openURL(const std::string& url) {
    const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
    return parsed.isValid() && !parsed.isRelative() && QDesktopServices::openUrl(parsed);
}

} // namespace platform
