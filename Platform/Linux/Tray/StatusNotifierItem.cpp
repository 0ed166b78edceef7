#include "Platform/Linux/Tray/StatusNotifierItem.h"

#include <QDBusError>
#include <QtEndian>
#include <array>
#include <utility>

namespace platform {

namespace {

/// What trays ask for, at one and two pixels per point.
constexpr std::array<int, 9> sides = {16, 18, 22, 24, 32, 36, 44, 48, 64};

IconPixmap pixmap(const DrawnImage& drawing, int side) {
    const QImage image = drawing.render({side, side}).convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{side, side, QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(image.constBits(), qsizetype{side} * side, pixmap.bytes.data());
    return pixmap;
}

} // namespace

StatusNotifierItem::StatusNotifierItem(std::function<void()> clicked, std::function<void()> refused)
    : clicked_(std::move(clicked)), refused_(std::move(refused)) {
    registerStatusNotifierTypes();
}

void StatusNotifierItem::setImage(std::shared_ptr<const DrawnImage> image) {
    image_ = std::move(image);
    Q_EMIT NewIcon();
}

QList<IconPixmap> StatusNotifierItem::iconPixmap() const {
    QList<platform::IconPixmap> pixmaps;
    if (image_) {
        for (const int side : sides) {
            pixmaps.append(pixmap(*image_, side));
        }
    }
    return pixmaps;
}

ToolTip StatusNotifierItem::toolTip() const {
    return {{}, {}, title(), {}};
}

QDBusObjectPath StatusNotifierItem::menuPath() const {
    return QDBusObjectPath(isMenu() ? menuPath_ : QString("/NO_DBUSMENU"));
}

void StatusNotifierItem::Activate(int /*x*/, int /*y*/) {
    if (isMenu()) {
        sendErrorReply(QDBusError::UnknownMethod, "The item has nothing but a menu.");
        report(refused_);
    } else {
        report(clicked_);
    }
}

void StatusNotifierItem::report(const std::function<void()>& handler) {
    // The call is answered before the click is handled.
    QMetaObject::invokeMethod(this, handler, Qt::QueuedConnection);
}

} // namespace platform
