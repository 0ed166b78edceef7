#include "Platform/Linux/Tray/StatusNotifierTypes.h"

#include <QDBusMetaType>

namespace platform {

namespace {

template <typename... Types>
void registerTypes() {
    (qDBusRegisterMetaType<Types>(), ...);
}

} // namespace

void registerStatusNotifierTypes() {
    registerTypes<IconPixmap,
                  QList<IconPixmap>,
                  ToolTip,
                  MenuRow,
                  QList<MenuRow>,
                  MenuLayout,
                  MenuRowRemovals,
                  QList<MenuRowRemovals>,
                  MenuEvent,
                  QList<MenuEvent>,
                  QList<QStringList>>();
}

} // namespace platform
