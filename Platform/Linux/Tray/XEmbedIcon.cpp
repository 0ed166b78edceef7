#include "Platform/Linux/Tray/XEmbedIcon.h"

#include "Platform/Linux/Tray/DrawnIconEngine.h"

#include <QIcon>
#include <utility>

namespace platform {

XEmbedIcon::XEmbedIcon(std::function<void()> clicked) {
    icon_.setToolTip("Pastewise");
    QObject::connect(&icon_,
                     &QSystemTrayIcon::activated,
                     &icon_,
                     [clicked = std::move(clicked)](QSystemTrayIcon::ActivationReason reason) {
                         // The second press of two was a click already.
                         if (reason != QSystemTrayIcon::DoubleClick) {
                             clicked();
                         }
                     });
}

void XEmbedIcon::setImage(std::shared_ptr<const DrawnImage> image) {
    if (!image) {
        icon_.hide();
        return;
    }
    icon_.setIcon(QIcon(new DrawnIconEngine(std::move(image))));
    icon_.show();
}

} // namespace platform
