#include "Platform/Linux/Qt/QtAlerts.h"

#include "Platform/Linux/Qt/QtActivation.h"
#include "Platform/Linux/Qt/QtPlainTitle.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QString>
#include <algorithm>
#include <string>
#include <vector>

namespace platform {

namespace {

/// Qt's own goes away without an answer only where one of its buttons says Cancel.
class MessageBox final : public QMessageBox {
  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Cancel)) {
            reject();
        } else {
            QMessageBox::keyPressEvent(event);
        }
    }

    // NOLINTNEXTLINE(bugprone-parent-virtual-call): QMessageBox's own ignores the event
    void closeEvent(QCloseEvent* event) override { QDialog::closeEvent(event); }

    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        bringToFront(*this);
    }
};

QMessageBox::Icon iconFor(AlertStyle style) {
    switch (style) {
    case AlertStyle::warning:
        return QMessageBox::Warning;
    case AlertStyle::informational:
        return QMessageBox::Information;
    case AlertStyle::critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

} // namespace

std::optional<std::size_t> QtAlerts::runModal(const Alert& alert) {
    MessageBox box;
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setTextFormat(Qt::PlainText);
    box.setIcon(iconFor(alert.style));
    box.setText(QString::fromStdString(alert.messageText));
    box.setInformativeText(QString::fromStdString(alert.informativeText));
    std::vector<QAbstractButton*> buttons;
    for (const std::string& title : alert.buttonTitles) {
        // Desktops sort buttons by their roles; those of one role stay in the order given.
        buttons.push_back(box.addButton(plainTitle(title), QMessageBox::ActionRole));
        if (buttons.size() == 1) {
            box.setDefaultButton(static_cast<QPushButton*>(buttons.front()));
        }
    }
    box.exec();
    const auto chosen = std::find(buttons.begin(), buttons.end(), box.clickedButton());
    if (chosen == buttons.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(chosen - buttons.begin());
}

} // namespace platform
