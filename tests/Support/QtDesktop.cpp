#include "tests/Support/QtDesktop.h"

#include "tests/Support/ChildProcess.h"
#include "tests/Support/QtTestLoop.h"

#include <QWidget>
#include <cstdlib>
#include <stdexcept>

namespace testing_support {

QtDesktop::QtDesktop() {
    for (const auto& [name, value] : session_.environment()) {
        if (value.empty()) {
            unsetenv(name.c_str());
        } else {
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    // Qt's built-in input method, whichever one the user's desktop has.
    setenv("QT_IM_MODULE", "compose", 1);
    QApplication::setApplicationName("pastewise");
    QApplication::setDesktopFileName("com.app.pastewise");
    QApplication::setQuitOnLastWindowClosed(false);
    application_ = std::make_unique<QApplication>(argumentCount_, programArguments);
    keyboard_ = std::make_unique<FakeKeyboard>(session_.display());
    waitForWindowManager();
}

QtDesktop::~QtDesktop() {
    QtTestLoop::turn();
}

QWidget* QtDesktop::widgetTitled(const std::string& title) {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->windowTitle().toStdString() == title) {
            return widget;
        }
    }
    return nullptr;
}

bool QtDesktop::waitForFocus(const QWidget& window) const {
    const std::string id = std::to_string(window.winId());
    return QtTestLoop::turnUntil([&] {
        return window.isActiveWindow() && output({"xdotool", "getwindowfocus"}) == id + "\n";
    });
}

void QtDesktop::setLayout(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{"setxkbmap", "-display", session_.display()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    static_cast<void>(output(command));
}

void QtDesktop::waitForWindowManager() const {
    QWidget probe;
    probe.show();
    const bool isManaged = QtTestLoop::turnUntil([&] {
        nudgeWindowManager();
        return probe.isActiveWindow();
    });
    if (!isManaged) {
        throw std::runtime_error("the window manager does not manage new windows");
    }
}

void QtDesktop::nudgeWindowManager() const {
    static_cast<void>(
        output({"xprop", "-root", "-f", "PASTEWISE_TEST", "8s", "-set", "PASTEWISE_TEST", "x"}));
}

std::string QtDesktop::output(const std::vector<std::string>& command) const {
    ChildProcess program(command, {.environment = session_.environment()});
    if (program.waitForExit() != 0) {
        throw std::runtime_error(command.front() + ": " + program.standardError());
    }
    return program.standardOutput();
}

} // namespace testing_support
