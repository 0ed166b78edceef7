#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

// What the protocols of status notifier items and their menus send, as the toolkit's D-Bus
// arguments. The members stand in the order in which they are sent.
namespace platform {

/// Rows of ARGB32 pixels in network byte order, not premultiplied: (iiay).
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};

/// (sa(iiay)ss)
struct ToolTip {
    QString iconName;
    QList<IconPixmap> iconPixmaps;
    QString title;
    QString text;
};

/// A row of a menu, or the menu itself, with its properties: (ia{sv}).
struct MenuRow {
    int id = 0;
    QVariantMap properties;
};

/// A row with those below it, each a variant of this type: (ia{sv}av).
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<QVariant> children;
};

/// Names of properties that a row does not have any more: (ias).
struct MenuRowRemovals {
    int id = 0;
    QStringList names;
};

/// Something that happened to a row where it is shown: (isvu).
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;
};

QDBusArgument& operator<<(QDBusArgument& out, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& in, ToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& out, const MenuRow& row);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuRow& row);
QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& out, const MenuRowRemovals& removals);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuRowRemovals& removals);
QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event);

/// To be called before any of these types is sent or received. Again does nothing.
void registerStatusNotifierTypes();

} // namespace platform

Q_DECLARE_METATYPE(platform::IconPixmap)
Q_DECLARE_METATYPE(platform::ToolTip)
Q_DECLARE_METATYPE(platform::MenuRow)
Q_DECLARE_METATYPE(platform::MenuLayout)
Q_DECLARE_METATYPE(platform::MenuRowRemovals)
Q_DECLARE_METATYPE(platform::MenuEvent)
