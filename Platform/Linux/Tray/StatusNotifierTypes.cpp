#include "Platform/Linux/Tray/StatusNotifierTypes.h"

#include <QDBusMetaType>

namespace platform {

namespace {

template <typename... Members>
QDBusArgument& write(QDBusArgument& out, const Members&... members) {
    out.beginStructure();
    (out << ... << members);
    out.endStructure();
    return out;
}

template <typename... Members>
const QDBusArgument& read(const QDBusArgument& in, Members&... members) {
    in.beginStructure();
    (in >> ... >> members);
    in.endStructure();
    return in;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& out, const IconPixmap& pixmap) {
    return write(out, pixmap.width, pixmap.height, pixmap.bytes);
}

const QDBusArgument& operator>>(const QDBusArgument& in, IconPixmap& pixmap) {
    return read(in, pixmap.width, pixmap.height, pixmap.bytes);
}

QDBusArgument& operator<<(QDBusArgument& out, const ToolTip& toolTip) {
    return write(out, toolTip.iconName, toolTip.iconPixmaps, toolTip.title, toolTip.text);
}

const QDBusArgument& operator>>(const QDBusArgument& in, ToolTip& toolTip) {
    return read(in, toolTip.iconName, toolTip.iconPixmaps, toolTip.title, toolTip.text);
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuRow& row) {
    return write(out, row.id, row.properties);
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuRow& row) {
    return read(in, row.id, row.properties);
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout) {
    out.beginStructure();
    out << layout.id << layout.properties;
    out.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const QVariant& child : layout.children) {
        out << QDBusVariant(child);
    }
    out.endArray();
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout) {
    return read(in, layout.id, layout.properties, layout.children);
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuRowRemovals& removals) {
    return write(out, removals.id, removals.names);
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuRowRemovals& removals) {
    return read(in, removals.id, removals.names);
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event) {
    return write(out, event.id, event.name, event.data, event.time);
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event) {
    return read(in, event.id, event.name, event.data, event.time);
}

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<QList<IconPixmap>>();
    qDBusRegisterMetaType<ToolTip>();
    qDBusRegisterMetaType<MenuRow>();
    qDBusRegisterMetaType<QList<MenuRow>>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuRowRemovals>();
    qDBusRegisterMetaType<QList<MenuRowRemovals>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<QStringList>>();
}

} // namespace platform
