// A start of the program as far as the bus is concerned: says on standard output how its claim to
// be the only instance went and, if it is the first, which requests come and whether the bus has
// gone, until it is ended.

#include "Platform/Linux/DBus/DBusApplication.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    const QCoreApplication qtApplication(argc, argv);
    platform::DBusApplication application([] {});
    switch (application.claim()) {
    case platform::DBusApplication::Claim::alreadyRunning:
        std::cout << "already running" << std::endl;
        return EXIT_SUCCESS;
    case platform::DBusApplication::Claim::noBus:
        std::cout << "no bus" << std::endl;
        return EXIT_SUCCESS;
    case platform::DBusApplication::Claim::first:
        break;
    }
    std::cout << "first" << std::endl;
    application.setRequests({.convert = [] { std::cout << "convert" << std::endl; },
                             .openPreferences = [] { std::cout << "preferences" << std::endl; }});
    const QDBusConnection bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, "another of this process");
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (!bus.isConnected()) {
            std::cout << "disconnected" << std::endl;
            watch.stop();
        }
    });
    watch.start(std::chrono::milliseconds(10));
    return QCoreApplication::exec();
}
