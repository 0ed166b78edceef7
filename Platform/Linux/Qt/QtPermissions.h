#pragma once

#include "Platform/Permissions.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QString>
#include <QUrl>
#include <cstddef>
#include <optional>
#include <string>

namespace platform {

/// Alerts as message boxes. The program asks for a permission only where it is not trusted, which
/// no Linux desktop knows, so it shows none here. Needs a QApplication.
class QtAlerts final : public Alerts {
  public:
    std::optional<std::size_t> runModal(const Alert& alert) override {
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
};

/// Opens URLs with the desktop's handlers. A URL without a scheme is refused: the handlers would
/// take it for the name of a file.
class QtWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override {
        const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
        return parsed.isValid() && !parsed.isRelative() && QDesktopServices::openUrl(parsed);
    }
};

} // namespace platform
