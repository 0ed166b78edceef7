#include "Foundation/Logger.h"
#include "Platform/Application.h"
#include "Platform/Linux/DBus/DBusApplication.h"
#include "Platform/Linux/InstanceLock.h"
#include "Platform/Linux/LinuxAccessibilityTrust.h"
#include "Platform/Linux/LocalCalendar.h"
#include "Platform/Linux/Qt/QtActivation.h"
#include "Platform/Linux/Qt/QtAlerts.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/Qt/QtKeyDownMonitors.h"
#include "Platform/Linux/Qt/QtLogSink.h"
#include "Platform/Linux/Qt/QtMainQueue.h"
#include "Platform/Linux/Qt/QtToolkit.h"
#include "Platform/Linux/Qt/QtWorkspace.h"
#include "Platform/Linux/StandardDescriptors.h"
#include "Platform/Linux/Store/PlistUserDefaults.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/Linux/Tray/TrayImages.h"
#include "Platform/Linux/Tray/TrayStatusBar.h"
#include "Platform/Linux/WorkerThread.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "Platform/Linux/X11/X11KeyboardModifiers.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Linux/X11/X11TrayManagerSelection.h"
#include "Platform/PlatformFactory.h"
#include "Platform/PlatformOf.h"
#include "Platform/Posix/FileStandardOutput.h"
#include "Platform/Posix/SystemClock.h"
#include "Text/Utf8Repair.h"

#include <malloc.h>

#include <QApplication>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

namespace {

/// A program that waits for most of its time gives back what it does not need.
void keepMemorySmall() {
    // The threads beside the main one allocate a little now and then. With heaps of their own the
    // program would grow for days before it stopped.
    static_cast<void>(mallopt(M_ARENA_MAX, 1));
    // Otherwise the heap learns from each large text to keep the next one's room, twice over.
    constexpr int largeTextSize = 256 * 1024;
    static_cast<void>(mallopt(M_MMAP_THRESHOLD, largeTextSize));
}

/// What the environment variable holds; empty when it is not set.
std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// What makes a process a program of the desktop: how it is ended, Qt, and the name and the lock
/// that no second process can have.
class DesktopProcess {
  public:
    DesktopProcess(int& argc, char** argv) : application_(argc, argv) {
        // Qt has set the user's language for the C library, with which libplist reads numbers. In
        // files they have a point everywhere.
        static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
        QApplication::setApplicationName("pastewise");
        QApplication::setDesktopFileName(QString::fromUtf8(applicationId));
        QApplication::setQuitOnLastWindowClosed(false);
    }

    /// Whether this is the only process of its kind. Waits a few seconds for one that is about to
    /// end. One that goes on was told where the bus allows it, unless the session manager and not
    /// the user started this one.
    [[nodiscard]] bool isFirst() {
        using SecondStart = DBusApplication::SecondStart;
        switch (busApplication_.claim(application_.isSessionRestored()
                                          ? SecondStart::endsQuietly
                                          : SecondStart::opensPreferences)) {
        case DBusApplication::Claim::first:
            break;
        case DBusApplication::Claim::alreadyRunning:
            return false;
        case DBusApplication::Claim::noBus:
            // Qt would look for the bus once more to tell screen readers of the windows. It would
            // wait half a minute for one that hangs, or start one that outlives the program.
            setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
            break;
        }
        // The name alone does not tell of a process that found no bus at its start. It comes first,
        // so that of all new starts with a bus one alone waits for the lock.
        constexpr std::chrono::seconds patience{3};
        lock_.emplace(InstanceLock::defaultPath(), patience);
        return lock_->result() != InstanceLock::Result::taken;
    }

    [[nodiscard]] const TerminationSignals& terminationSignals() const {
        return terminationSignals_;
    }

    [[nodiscard]] QApplication& application() { return application_; }

    [[nodiscard]] DBusApplication& busApplication() { return busApplication_; }

    [[nodiscard]] QtEventLoop& eventLoop() { return eventLoop_; }

    [[nodiscard]] QtMainQueue& mainQueue() { return mainQueue_; }

  private:
    TerminationSignals terminationSignals_;
    QApplication application_;
    DBusApplication busApplication_{bringAllToFront};
    std::optional<InstanceLock> lock_;
    QtEventLoop eventLoop_;
    QtMainQueue mainQueue_;
};

/// What the program needs of a desktop on an X server: clipboard, hot keys and what belongs to the
/// keyboard over XCB, the tray and the program's name over the session bus, everything else through
/// Qt.
struct X11DesktopServices {
    X11DesktopServices(std::unique_ptr<DesktopProcess> desktopProcess,
                       std::unique_ptr<X11Connection> connection,
                       std::unique_ptr<X11EventHotKeyService> openHotKeys)
        : process(std::move(desktopProcess)),
          hotKeys(std::move(openHotKeys)),
          pasteboard(std::move(connection), eventLoop, mainQueue, loggers, text::repairUtf8) {}

    std::unique_ptr<DesktopProcess> process;
    std::unique_ptr<X11EventHotKeyService> hotKeys;
    QtLogSink logSink;
    foundation::LoggerFactory loggers{logSink, std::string(applicationId)};
    QtEventLoop& eventLoop = process->eventLoop();
    QtMainQueue& mainQueue = process->mainQueue();
    std::unique_ptr<FileDescriptorWatch> terminationWatch =
        process->terminationSignals().deliver(eventLoop, [] { QApplication::quit(); });
    X11Pasteboard pasteboard;
    X11EventHotKeyService& eventHotKeyService = *hotKeys;
    SystemClock clock;
    LocalCalendar calendar;
    WorkerThread diskWorker;
    PlistUserDefaults userDefaults{
        PlistUserDefaults::defaultPath(), mainQueue, diskWorker, loggers};
    FileStandardOutput standardOutput;
    LinuxAccessibilityTrust accessibilityTrust;
    QtAlerts alerts;
    QtWorkspace workspace;
    DBusApplication& application = process->busApplication();
    TrayImages images;
    TrayStatusBar statusBar{
        process->busApplication().connection(), [this](std::function<void()> didChange) {
            return X11TrayManagerSelection::open(eventLoop, std::move(didChange));
        }};
    QtToolkit toolkit;
    X11KeyboardModifiers keyboardModifiers;
    QtKeyDownMonitors keyDownMonitors{&keyboardModifiers};
};

class X11DesktopPlatform final : public PlatformOf<X11DesktopServices> {
  public:
    X11DesktopPlatform(std::unique_ptr<DesktopProcess> process,
                       std::unique_ptr<X11Connection> connection,
                       std::unique_ptr<X11EventHotKeyService> hotKeys)
        : PlatformOf(std::move(process), std::move(connection), std::move(hotKeys)) {
        if (!environmentVariable("WAYLAND_DISPLAY").empty()) {
            services()
                .loggers.logger("LinuxPlatform")
                .error(
                    "In a Wayland session the shortcut works only while an X11 window is in front");
        }
        // What was copied and what was counted outlive the session as they outlive the program.
        QApplication& application = services().process->application();
        QObject::connect(
            &application, &QApplication::commitDataRequest, &application, [this] { save(); });
    }

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        return std::nullopt;
    }

    int run(const std::function<void()>& didFinishLaunching) override {
        didFinishLaunching();
        const int exitCode = QApplication::exec();
        save();
        return exitCode;
    }

  private:
    void save() {
        services().userDefaults.flush();
        services().pasteboard.handOver();
    }
};

} // namespace

/// The one place that chooses among the backends of Linux desktops, once at the start.
PlatformOrNot makePlatform(int& argc, char** argv) {
    fillStandardDescriptors();
    keepMemorySmall();
    const std::string display = environmentVariable("DISPLAY");
    if (display.empty()) {
        return NoPlatform{"there is no X display: DISPLAY is not set"};
    }
    auto connection = X11Connection::open();
    if (!connection) {
        return NoPlatform{"the X display " + display + " does not answer"};
    }
    // A log line into a pipe that nobody reads any more must not end the program.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    if (environmentVariable("QT_QPA_PLATFORM").empty()) {
        setenv("QT_QPA_PLATFORM", "xcb", 1);
    }
    auto process = std::make_unique<DesktopProcess>(argc, argv);
    if (!process->isFirst()) {
        return AlreadyRunning{};
    }
    auto hotKeys = X11EventHotKeyService::open(process->eventLoop(), process->mainQueue());
    if (!hotKeys) {
        return NoPlatform{"the X display " + display +
                          " has no keyboard extension, so no shortcut can be taken"};
    }
    return std::make_unique<X11DesktopPlatform>(
        std::move(process), std::move(connection), std::move(hotKeys));
}

} // namespace platform
