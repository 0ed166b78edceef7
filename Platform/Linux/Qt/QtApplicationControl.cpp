#include "Platform/Linux/Qt/QtApplicationControl.h"

#include "Platform/Linux/Qt/QtActivation.h"

#include <QCoreApplication>

namespace platform {

void QtApplicationControl::activateIgnoringOtherApps() {
    bringAllToFront();
}

void QtApplicationControl::terminate() {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
}

} // namespace platform
