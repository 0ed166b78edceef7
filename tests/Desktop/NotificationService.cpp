// A notification service on the session bus that shows nothing. Prints "ready" once it has its
// name, and each notification as "ID APPLICATION|TITLE|BODY|ACTION KEY,ACTION TITLE".

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <cstdio>

namespace {

void print(const QString& line) {
    static_cast<void>(std::puts(line.toUtf8().constData()));
    static_cast<void>(std::fflush(stdout));
}

class NotificationService final : public QDBusVirtualObject {
  public:
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() != "Notify" || message.signature() != "susssasa{sv}i") {
            return false;
        }
        const auto arguments = message.arguments();
        ++id_;
        print(QString("%1 %2").arg(id_).arg(QStringList{arguments[0].toString(),
                                                        arguments[3].toString(),
                                                        arguments[4].toString(),
                                                        arguments[5].toStringList().join(',')}
                                                .join('|')));
        bus.send(message.createReply(id_));
        return true;
    }

  private:
    uint id_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    NotificationService service;
    auto bus = QDBusConnection::sessionBus();
    if (!bus.registerVirtualObject("/org/freedesktop/Notifications", &service) ||
        !bus.registerService("org.freedesktop.Notifications")) {
        return 1;
    }
    print("ready");
    return QCoreApplication::exec();
}
