#include "tests/Desktop/TrayHost.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtEndian>
#include <array>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

namespace tray_host {

namespace {

const QString watcherService = "org.kde.StatusNotifierWatcher";
const QString watcherPath = "/StatusNotifierWatcher";
const QString itemInterface = "org.kde.StatusNotifierItem";
const QString menuInterface = "com.canonical.dbusmenu";
const QString propertiesInterface = "org.freedesktop.DBus.Properties";
/// Longer than a working program takes to answer, even on a busy machine.
constexpr int callLimitInMilliseconds = 10'000;

qint64 now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// The pictures of an IconPixmap property, a(iiay).
std::vector<QImage> readPixmaps(const QVariant& value) {
    std::vector<QImage> images;
    const auto argument = value.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray bytes;
        argument.beginStructure();
        argument >> width >> height >> bytes;
        argument.endStructure();
        if (bytes.size() != qsizetype{4} * width * height) {
            print("error", {{"reason", "a picture has too many or too few bytes"}});
            continue;
        }
        QImage image(width, height, QImage::Format_ARGB32);
        qFromBigEndian<quint32>(bytes.constData(), qsizetype{width} * height, image.bits());
        images.push_back(std::move(image));
    }
    argument.endArray();
    return images;
}

QJsonObject describe(const std::vector<QImage>& images) {
    QJsonArray sizes;
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const QImage& image : images) {
        sizes.append(QString("%1x%2").arg(image.width()).arg(image.height()));
        hash.addData(
            QByteArrayView(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
    }
    return {{"sizes", sizes}, {"digest", QString(hash.result().toHex())}};
}

QJsonArray readShortcut(const QVariant& value) {
    QJsonArray combinations;
    const auto argument = value.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QStringList keys;
        argument >> keys;
        combinations.append(QJsonArray::fromStringList(keys));
    }
    argument.endArray();
    return combinations;
}

/// One (ia{sv}av), with defaults for omitted properties.
QJsonObject readRow(const QDBusArgument& argument, QJsonArray& children) {
    int id = 0;
    QVariantMap properties;
    QVariantList childArguments;
    argument.beginStructure();
    argument >> id >> properties >> childArguments;
    argument.endStructure();
    for (const QVariant& child : childArguments) {
        QJsonArray none;
        children.append(readRow(child.value<QDBusArgument>(), none));
    }
    QJsonObject row{{"id", id},
                    {"label", properties.value("label", "").toString()},
                    {"enabled", properties.value("enabled", true).toBool()},
                    {"visible", properties.value("visible", true).toBool()},
                    {"type", properties.value("type", "standard").toString()}};
    if (properties.contains("shortcut")) {
        row.insert("shortcut", readShortcut(properties.value("shortcut")));
    }
    return row;
}

QString asShown(QString label) {
    const QString placeholder(QChar(0x1));
    label.replace("__", placeholder);
    label.remove('_');
    return label.replace(placeholder, "_");
}

QJsonObject outcome(const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ErrorMessage) {
        return {{"error", reply.errorName() + ": " + reply.errorMessage()}};
    }
    return {};
}

QString readToolTip(const QDBusArgument& argument) {
    QString icon;
    QString title;
    argument.beginStructure();
    argument >> icon;
    argument.beginArray();
    while (!argument.atEnd()) {
        int side = 0;
        QByteArray bytes;
        argument.beginStructure();
        argument >> side >> side >> bytes;
        argument.endStructure();
    }
    argument.endArray();
    argument >> title;
    return title;
}

} // namespace

void print(const QString& event, QJsonObject values) {
    values.insert("event", event);
    if (!values.contains("time")) {
        values.insert("time", now());
    }
    std::puts(QJsonDocument(values).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

TrayHost::TrayHost(bool hasHost) : hasHost_(hasHost) {
    connect(
        &goneServices_, &QDBusServiceWatcher::serviceUnregistered, this, &TrayHost::forgetService);
    bus_.connect({}, {}, itemInterface, "NewIcon", this, SLOT(readIcon()));
    bus_.connect(
        {}, {}, menuInterface, "ItemsPropertiesUpdated", this, SLOT(readRowUpdates(QDBusMessage)));
    bus_.connect(
        {}, {}, menuInterface, "LayoutUpdated", this, SLOT(readLayoutUpdate(QDBusMessage)));
}

bool TrayHost::start() {
    return bus_.registerObject(watcherPath,
                               this,
                               QDBusConnection::ExportAllSlots |
                                   QDBusConnection::ExportAllProperties |
                                   QDBusConnection::ExportAllSignals) &&
           bus_.registerService(watcherService);
}

void TrayHost::stop() {
    bus_.unregisterService(watcherService);
    bus_.unregisterObject(watcherPath);
    registeredItems_.clear();
    item_.reset();
}

void TrayHost::run(const QString& line) {
    const QString name = line.section(' ', 0, 0);
    const QString argument = line.section(' ', 1);
    if (name == "quit") {
        QCoreApplication::quit();
    } else if (name == "host") {
        hasHost_ = argument == "on";
        if (hasHost_) {
            Q_EMIT StatusNotifierHostRegistered();
        } else {
            Q_EMIT StatusNotifierHostUnregistered();
        }
        print(name);
    } else if (name == "watcher") {
        if (argument == "on") {
            print(name, start() ? QJsonObject{} : QJsonObject{{"error", "no name"}});
        } else {
            stop();
            print(name);
        }
    } else if (!item_) {
        print(name, {{"error", "no item"}});
    } else {
        print(name, runOnItem(name, argument));
    }
}

void TrayHost::RegisterStatusNotifierItem(const QString& serviceOrPath) {
    const bool isPath = serviceOrPath.startsWith('/');
    item_ = Item{isPath ? message().service() : serviceOrPath,
                 isPath ? serviceOrPath : QString("/StatusNotifierItem"),
                 {}};
    const QString name = item_->service + item_->path;
    print("registered", {{"service", item_->service}, {"path", item_->path}});
    if (!registeredItems_.contains(name)) {
        registeredItems_.append(name);
        goneServices_.addWatchedService(item_->service);
        Q_EMIT StatusNotifierItemRegistered(name);
    }
    readIcon();
}

void TrayHost::readIcon() {
    if (!item_) {
        return;
    }
    auto* const call = new QDBusPendingCallWatcher(bus_.asyncCall(getProperty("IconPixmap")), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [call] {
        const qint64 arrival = now();
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isError()) {
            print("icon", {{"error", reply.error().message()}});
            return;
        }
        QJsonObject icon = describe(readPixmaps(reply.value().variant()));
        icon.insert("time", arrival);
        print("icon", icon);
    });
}

void TrayHost::readRowUpdates(const QDBusMessage& signal) {
    QJsonObject rows;
    const auto argument = signal.arguments().value(0).value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        int id = 0;
        QVariantMap properties;
        argument.beginStructure();
        argument >> id >> properties;
        argument.endStructure();
        rows.insert(QString::number(id), properties.value("label").toString());
    }
    argument.endArray();
    print("rows-updated", {{"rows", rows}});
}

void TrayHost::readLayoutUpdate(const QDBusMessage& signal) {
    print("layout-updated", {{"revision", signal.arguments().value(0).toInt()}});
}

QDBusMessage TrayHost::getProperty(const QString& name) const {
    auto call =
        QDBusMessage::createMethodCall(item_->service, item_->path, propertiesInterface, "Get");
    call << itemInterface << name;
    return call;
}

void TrayHost::forgetService(const QString& service) {
    goneServices_.removeWatchedService(service);
    for (const QString& name : QStringList(registeredItems_)) {
        if (name.startsWith(service + '/')) {
            registeredItems_.removeAll(name);
            Q_EMIT StatusNotifierItemUnregistered(name);
        }
    }
    if (item_ && item_->service == service) {
        item_.reset();
    }
    print("unregistered", {{"service", service}});
}

QDBusMessage TrayHost::call(const QDBusMessage& message) const {
    return bus_.call(message, QDBus::Block, callLimitInMilliseconds);
}

QDBusMessage TrayHost::menuCall(const QString& method) const {
    return QDBusMessage::createMethodCall(item_->service, item_->menuPath, menuInterface, method);
}

bool TrayHost::findMenu() {
    if (item_->menuPath.isEmpty()) {
        const QDBusMessage reply = call(getProperty("Menu"));
        if (reply.type() != QDBusMessage::ReplyMessage) {
            return false;
        }
        item_->menuPath = reply.arguments()
                              .value(0)
                              .value<QDBusVariant>()
                              .variant()
                              .value<QDBusObjectPath>()
                              .path();
    }
    return !item_->menuPath.isEmpty();
}

QJsonObject TrayHost::runOnItem(const QString& name, const QString& argument) {
    static const std::array<std::pair<QString, QString>, 3> methods = {
        {{"activate", "Activate"}, {"context", "ContextMenu"}, {"secondary", "SecondaryActivate"}}};
    for (const auto& [command, method] : methods) {
        if (name == command) {
            auto message =
                QDBusMessage::createMethodCall(item_->service, item_->path, itemInterface, method);
            message << argument.section(' ', 0, 0).toInt() << argument.section(' ', 1, 1).toInt();
            return outcome(call(message));
        }
    }
    if (name == "properties") {
        return readProperties();
    }
    if (name == "icon") {
        return readIconNow(argument);
    }
    return findMenu() ? runOnMenu(name, argument) : QJsonObject{{"error", "no menu"}};
}

QJsonObject TrayHost::readProperties() const {
    auto message =
        QDBusMessage::createMethodCall(item_->service, item_->path, propertiesInterface, "GetAll");
    message << itemInterface;
    const QDBusMessage reply = call(message);
    QJsonObject values;
    const auto properties = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        if (property->canConvert<QDBusObjectPath>()) {
            values.insert(property.key(), property->value<QDBusObjectPath>().path());
        } else if (!property->canConvert<QDBusArgument>()) {
            values.insert(property.key(), QJsonValue::fromVariant(*property));
        } else if (property.key() == "ToolTip") {
            values.insert(property.key(), readToolTip(property->value<QDBusArgument>()));
        }
    }
    QJsonObject result = outcome(reply);
    result.insert("values", values);
    return result;
}

QJsonObject TrayHost::readIconNow(const QString& file) const {
    const QDBusMessage reply = call(getProperty("IconPixmap"));
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return outcome(reply);
    }
    const auto images = readPixmaps(reply.arguments().value(0).value<QDBusVariant>().variant());
    QJsonObject result = describe(images);
    if (!file.isEmpty() && (images.empty() || !images.back().save(file, "PNG"))) {
        result.insert("error", "no picture written");
    }
    return result;
}

QDBusMessage TrayHost::sendEvent(int id, const QString& event) const {
    auto message = menuCall("Event");
    message << id << event << QVariant::fromValue(QDBusVariant(QString())) << 0U;
    return call(message);
}

QJsonObject TrayHost::readLayout() const {
    auto message = menuCall("GetLayout");
    message << 0 << -1 << QStringList();
    const QDBusMessage reply = call(message);
    QJsonObject result = outcome(reply);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        QJsonArray rows;
        readRow(reply.arguments().value(1).value<QDBusArgument>(), rows);
        result.insert("revision", reply.arguments().value(0).toInt());
        result.insert("rows", rows);
    }
    return result;
}

QJsonObject TrayHost::runOnMenu(const QString& name, const QString& argument) const {
    if (name == "menu") {
        auto message = menuCall("AboutToShow");
        message << 0;
        const QDBusMessage reply = call(message);
        QJsonObject result = readLayout();
        result.insert("update", reply.arguments().value(0).toBool());
        return result;
    }
    if (name == "layout") {
        return readLayout();
    }
    if (name == "opened" || name == "closed") {
        return outcome(sendEvent(0, name));
    }
    if (name == "click") {
        return outcome(sendEvent(argument.toInt(), "clicked"));
    }
    if (name == "choose") {
        for (const auto& row : readLayout().value("rows").toArray()) {
            if (asShown(row.toObject().value("label").toString()) == argument) {
                return outcome(sendEvent(row.toObject().value("id").toInt(), "clicked"));
            }
        }
        return {{"error", "no such row"}};
    }
    return {{"error", "no such command"}};
}

} // namespace tray_host
