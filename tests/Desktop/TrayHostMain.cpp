// A StatusNotifier watcher and host on the session bus.
//
//   pastewise_tray_host [--no-host] [--no-watcher]
//
// It owns org.kde.StatusNotifierWatcher and reads the icon of every item that registers, as a panel
// does. With --no-host there is a watcher without a host, with --no-watcher neither, until a
// command changes that. It ends when its standard input does.
//
// Events are printed as lines of JSON, each with "event" and "time", the monotonic clock in
// nanoseconds:
//   ready         the name is claimed, or --no-watcher was given
//   registered    an item has registered: "service", "path"
//   icon          its pixels have arrived, also after each NewIcon: "sizes" such as ["16x16"],
//                 "digest" of all pixels; "time" is that of the arrival
//   unregistered  an item has disappeared: "service"
//   rows-updated  ItemsPropertiesUpdated: "rows", an object of labels by id
//   layout-updated  LayoutUpdated: "revision"
//
// Commands are lines on standard input; each finally prints one line, whose event is the command's
// first word, with "error" if the call failed:
//   menu            AboutToShow, then GetLayout: "update", "revision", "rows" (id, label, enabled,
//                   visible, type, shortcut)
//   layout          GetLayout alone
//   opened, closed  Event of the menu as a whole
//   choose LABEL    clicks the row with that label, underscores as a user sees them
//   click ID        clicks the row with that number, whether it exists or not
//   activate X Y    also context and secondary: the item's methods of similar names
//   properties      every property of the item but its pixels: "values"
//   icon [FILE]     "sizes" and "digest"; writes the largest picture to FILE as PNG
//   host on|off     starts or ends the host, not the watcher
//   watcher on|off  starts or ends the watcher with its host
//   quit

#include "tests/Desktop/TrayHost.h"

#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QString>
#include <array>
#include <cstdio>

namespace {

using tray_host::TrayHost;

/// Lines of standard input as they arrive.
class Commands {
  public:
    explicit Commands(TrayHost& host) : host_(host) {
        fcntl(STDIN_FILENO, F_SETFL, O_NONBLOCK);
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { read(); });
    }

  private:
    void read() {
        std::array<char, 4096> chunk{};
        const ssize_t count = ::read(STDIN_FILENO, chunk.data(), chunk.size());
        if (count == 0) {
            notifier_.setEnabled(false);
            QCoreApplication::quit();
        }
        if (count > 0) {
            pending_.append(chunk.data(), count);
        }
        for (qsizetype end = pending_.indexOf('\n'); end >= 0; end = pending_.indexOf('\n')) {
            const QString line = QString::fromUtf8(pending_.left(end));
            pending_.remove(0, end + 1);
            host_.run(line);
        }
    }

    TrayHost& host_;
    QByteArray pending_;
    QSocketNotifier notifier_{STDIN_FILENO, QSocketNotifier::Read};
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    TrayHost host(!arguments.contains("--no-host"));
    if (!arguments.contains("--no-watcher") && !host.start()) {
        std::fputs("the name of the watcher cannot be taken\n", stderr);
        return 1;
    }
    const Commands commands(host);
    tray_host::print("ready");
    return QCoreApplication::exec();
}
