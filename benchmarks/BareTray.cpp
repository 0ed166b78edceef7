// The least program with a tray icon that the toolkit makes: what a tray program weighs before it
// does anything.

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmap picture(22, 22);
    picture.fill(Qt::black);
    QMenu menu;
    menu.addAction("Quit", &application, &QApplication::quit);
    QSystemTrayIcon icon{QIcon(picture)};
    icon.setContextMenu(&menu);
    icon.show();
    return QApplication::exec();
}
