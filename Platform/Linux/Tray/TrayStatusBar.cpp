#include "Platform/Linux/Tray/TrayStatusBar.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace platform {

namespace {

/// Where trays look for an item that is registered by its name.
const QString itemPath = "/StatusNotifierItem";
const QString menuPath = "/MenuBar";

constexpr std::chrono::milliseconds settlingTime{300};

/// How long a tray has to open the menu before the program opens its own.
constexpr std::chrono::milliseconds trayMenuLimit{200};

/// The usual side of icons in a tray, in points.
constexpr int usualIconSide = 24;

QDBusMessage busCall(const QString& method) {
    return QDBusMessage::createMethodCall(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method);
}

} // namespace

/// What the item shows: an image, as trays have no place for a title. May outlive the item.
class TrayStatusItem::Button final : public StatusBarButton {
  public:
    /// `imageDidChange` is called by the setters.
    explicit Button(std::function<void()> imageDidChange)
        : imageDidChange_(std::move(imageDidChange)) {}

    /// The image comes from TrayImages.
    void setImage(std::shared_ptr<const Image> image) override {
        image_ = std::dynamic_pointer_cast<const DrawnImage>(image);
        imageDidChange_();
    }

    void setImagePosition(ImagePosition position) override {
        if (std::exchange(position_, position) != position) {
            imageDidChange_();
        }
    }

    void setTitle(std::string /*title*/) override {}

    void setAction(Action action) override { action_ = std::move(action); }

    /// Null if nothing is visible.
    [[nodiscard]] std::shared_ptr<const DrawnImage> visibleImage() const {
        return position_ == ImagePosition::noImage ? nullptr : image_;
    }

    void performAction() const {
        if (const auto perform = action_.perform) {
            perform();
        }
    }

    void detach() {
        imageDidChange_ = [] {};
    }

  private:
    std::function<void()> imageDidChange_;
    std::shared_ptr<const DrawnImage> image_;
    ImagePosition position_ = ImagePosition::imageLeading;
    Action action_;
};

TrayStatusItem::TrayStatusItem(TrayManagerSelectionMaker makeManagerSelection)
    : service_(QString("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid())),
      button_(std::make_shared<Button>([this] { showImage(); })),
      busMenu_([this] { leaveMenuToTray(); }),
      busItem_([this] { handleClick(); }, [this] { trayMenuWait_.start(trayMenuLimit); }),
      hosts_(service_, std::move(makeManagerSelection), [this] { moveToHost(); }) {
    trayMenuWait_.setSingleShot(true);
    QObject::connect(&trayMenuWait_, &QTimer::timeout, &busItem_, [this] { handleClick(); });
    // A panel that starts embeds windows a little before it shows items on the bus, and while it is
    // busy its answer about the bus comes late. An icon made in between would make Qt choose the
    // bus (see XEmbedIcon) and show up as a second item, only to leave at once; some panels crash
    // then. So the bus is asked once more, and only its answer makes a window.
    settling_.setSingleShot(true);
    QObject::connect(&settling_, &QTimer::timeout, &busItem_, [this] {
        hosts_.lookAgain([this] { makeWindow(); });
    });
}

TrayStatusItem::~TrayStatusItem() {
    button_->detach();
    if (bus_) {
        bus_->unregisterObject(itemPath);
        bus_->unregisterObject(menuPath);
        bus_->asyncCall(busCall("ReleaseName") << service_);
    }
}

void TrayStatusItem::setBus(const QDBusConnection& bus) {
    bus_ = bus;
    if (bus.isConnected()) {
        constexpr auto everything = QDBusConnection::ExportAllSlots |
                                    QDBusConnection::ExportAllSignals |
                                    QDBusConnection::ExportAllProperties;
        constexpr uint doNotQueue = 4;
        bus_->registerObject(menuPath, &busMenu_, everything);
        bus_->registerObject(itemPath, &busItem_, everything);
        // No need to wait for the reply: the bus grants the name before it delivers later messages.
        bus_->asyncCall(busCall("RequestName") << service_ << doNotQueue);
    }
    hosts_.setBus(bus);
}

std::shared_ptr<StatusBarButton> TrayStatusItem::button() {
    return button_;
}

void TrayStatusItem::setMenu(std::shared_ptr<Menu> menu) {
    menu_ = std::move(menu);
    popupMenu_.reset();
    busMenu_.setMenu(menu_);
    busItem_.setMenuPath(menu_ ? menuPath : QString());
}

void TrayStatusItem::showImage() {
    busItem_.setImage(button_->visibleImage());
    if (xEmbedIcon_) {
        xEmbedIcon_->setImage(button_->visibleImage());
    }
}

void TrayStatusItem::moveToHost() {
    if (hosts_.kind() == TrayHosts::Kind::xEmbed) {
        settling_.start(settlingTime);
    } else {
        settling_.stop();
        xEmbedIcon_.reset();
    }
}

void TrayStatusItem::makeWindow() {
    if (!xEmbedIcon_ && hosts_.kind() == TrayHosts::Kind::xEmbed) {
        xEmbedIcon_.emplace([this] { handleClick(); });
        xEmbedIcon_->setImage(button_->visibleImage());
    }
}

void TrayStatusItem::handleClick() {
    if (!menu_) {
        button_->performAction();
        return;
    }
    if (!popupMenu_) {
        popupMenu_.emplace(menu_);
    }
    popupMenu_->popUp(iconGeometry());
}

void TrayStatusItem::leaveMenuToTray() {
    trayMenuWait_.stop();
    if (popupMenu_) {
        popupMenu_->close();
    }
}

QRect TrayStatusItem::iconGeometry() const {
    if (xEmbedIcon_) {
        return xEmbedIcon_->geometry();
    }
    // Trays on the bus do not tell where the icon is, but the pointer is on it.
    constexpr QPoint reach(usualIconSide, usualIconSide);
    return {QCursor::pos() - reach, QCursor::pos() + reach};
}

TrayStatusBar::TrayStatusBar(TrayManagerSelectionMaker makeManagerSelection)
    : makeManagerSelection_(std::move(makeManagerSelection)) {}

void TrayStatusBar::setBus(const QDBusConnection& bus) {
    bus_ = bus;
    if (TrayStatusItem* const item = item_.get()) {
        item->setBus(bus);
    }
}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem(double /*length*/) {
    auto item = std::make_unique<TrayStatusItem>(makeManagerSelection_);
    item_ = item->reference();
    if (bus_) {
        item->setBus(*bus_);
    }
    return item;
}

} // namespace platform
