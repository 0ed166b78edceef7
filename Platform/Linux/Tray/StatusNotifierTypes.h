#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <tuple>

// The structures of the protocols for status notifier items and their menus. members() has their
// members in the order in which they are sent.
namespace platform {

/// Rows of ARGB32 pixels in network byte order, not premultiplied: (iiay).
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static auto members(auto& self) { return std::tie(self.width, self.height, self.bytes); }
};

/// (sa(iiay)ss)
struct ToolTip {
    QString iconName;
    QList<IconPixmap> iconPixmaps;
    QString title;
    QString text;

    static auto members(auto& self) {
        return std::tie(self.iconName, self.iconPixmaps, self.title, self.text);
    }
};

/// A row of a menu, or the menu itself, with its properties: (ia{sv}).
struct MenuRow {
    int id = 0;
    QVariantMap properties;

    static auto members(auto& self) { return std::tie(self.id, self.properties); }
};

/// A row with those below it, each a variant of this type: (ia{sv}av).
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QVariantList children;

    static auto members(auto& self) { return std::tie(self.id, self.properties, self.children); }
};

/// The names of properties that a row no longer has: (ias).
struct MenuRowRemovals {
    int id = 0;
    QStringList names;

    static auto members(auto& self) { return std::tie(self.id, self.names); }
};

/// Something that happened to a row where it is shown: (isvu).
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;

    static auto members(auto& self) { return std::tie(self.id, self.name, self.data, self.time); }
};

template <typename Structure>
concept BusStructure = requires(Structure& structure) {
    Structure::members(structure);
};

template <BusStructure Structure>
QDBusArgument& operator<<(QDBusArgument& out, const Structure& structure) {
    out.beginStructure();
    std::apply([&out](const auto&... member) { (out << ... << member); },
               Structure::members(structure));
    out.endStructure();
    return out;
}

template <BusStructure Structure>
const QDBusArgument& operator>>(const QDBusArgument& in, Structure& structure) {
    in.beginStructure();
    std::apply([&in](auto&... member) { (in >> ... >> member); }, Structure::members(structure));
    in.endStructure();
    return in;
}

/// Must be called before any of these types is sent or received. May be called again.
inline void registerStatusNotifierTypes() {
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

Q_DECLARE_METATYPE(platform::IconPixmap)
Q_DECLARE_METATYPE(platform::ToolTip)
Q_DECLARE_METATYPE(platform::MenuRow)
Q_DECLARE_METATYPE(platform::MenuLayout)
Q_DECLARE_METATYPE(platform::MenuRowRemovals)
Q_DECLARE_METATYPE(platform::MenuEvent)
