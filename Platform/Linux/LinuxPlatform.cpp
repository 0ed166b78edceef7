#include "Foundation/Logger.h"
#include "Platform/Linux/DBus/DBusApplication.h"
#include "Platform/Linux/DBus/DesktopNotifications.h"
#include "Platform/Linux/DBus/SessionBus.h"
#include "Platform/Linux/Keys/KeyCodes.h"
#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/Linux/LinuxServices.h"
#include "Platform/Linux/ProcessSetup.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/Qt/QtKeyDownMonitors.h"
#include "Platform/Linux/Qt/QtLogSink.h"
#include "Platform/Linux/Qt/QtPermissions.h"
#include "Platform/Linux/Qt/QtToolkit.h"
#include "Platform/Linux/Qt/QtWindow.h"
#include "Platform/Linux/SessionChoice.h"
#include "Platform/Linux/Store/Autostart.h"
#include "Platform/Linux/Store/FileUserDefaults.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/Linux/Tray/TrayImages.h"
#include "Platform/Linux/Tray/TrayStatusBar.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Linux/X11/X11TrayManagerSelection.h"
#include "Platform/Platform.h"
#include "Platform/PlatformOf.h"
#include "Platform/Posix/PosixServices.h"

#include <QAccessible>
#include <QApplication>
#include <QEventLoop>
#include <QIcon>
#include <QThreadPool>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;

/// Empty if the variable is not set.
std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The address of the session bus, which Qt's own parts, such as its support for screen readers,
/// will use too. Otherwise they would start a bus where there is none. Called before Qt has
/// threads.
std::string adoptBusAddress() {
    std::string address = SessionBus::addressFromEnvironment();
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    return address;
}

/// Makes the windows known to screen readers, for which Qt connects to the session bus and waits
/// for it, so the bus must be known to answer. QApplication::exec() would do the same at once.
void connectAccessibility() {
    QAccessible::setRootObject(qApp);
}

/// The executable contains the pictures.
QIcon windowIcon() {
    QIcon icon;
    for (const char* file : {":/icons/48.png", ":/icons/128.png"}) {
        icon.addFile(file);
    }
    return icon;
}

enum class Instance : std::uint8_t {
    first,
    second,     ///< Another process is running, and there is nothing left to do.
    unreachable ///< Another process is running that neither replies nor ends.
};

/// What makes the process a desktop program, whatever the display server: signals, Qt, the log, and
/// the lock that only one process can have.
class DesktopProcess {
  public:
    DesktopProcess(int& argc, char** argv) : application_(argc, argv) {
        // The application name is the class of windows on X11, the name of the desktop file their
        // application id on Wayland.
        QApplication::setApplicationName(QString::fromUtf8(applicationId));
        QApplication::setDesktopFileName(QString::fromUtf8(applicationId));
        QApplication::setQuitOnLastWindowClosed(false);
    }

    /// Finds out whether another instance is running. If so, asks it to open its preferences, or
    /// leaves it alone if the session manager and not the user started this one. Waits a few
    /// seconds for an instance that does not reply: it may be about to end.
    [[nodiscard]] Instance instance() {
        if (lock_.tryToLock()) {
            return Instance::first;
        }
        if (application_.isSessionRestored()) {
            return Instance::second;
        }
        QEventLoop loop;
        const auto end = [&loop](Instance result) { loop.exit(static_cast<int>(result)); };
        const auto watch = watchTermination([&] { end(Instance::second); });
        bool isAsking = false;
        std::function<void()> ask; // Empty without a bus.
        const auto handleReply = [&](bool isPositive) {
            isAsking = false;
            if (isPositive) {
                end(Instance::second);
            }
        };
        const SessionBus sessionBus(busAddress_, [&](const auto& bus) {
            ask = nullptr;
            if (bus.isConnected()) {
                ask = [&, bus] { DBusApplication::askOtherInstance(bus, &loop, handleReply); };
            }
        });
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
            if (lock_.tryToLock()) {
                end(Instance::first);
            } else if (ask && !std::exchange(isAsking, true)) {
                ask();
            }
        });
        poll.start(20ms);
        QTimer::singleShot(3s, &loop, [&] { end(Instance::unreachable); });
        return static_cast<Instance>(loop.exec());
    }

    [[nodiscard]] std::unique_ptr<FileDescriptorWatch>
    watchTermination(std::function<void()> terminate) {
        return terminationSignals_.deliver(eventLoop_, std::move(terminate));
    }

    [[nodiscard]] const std::string& busAddress() const { return busAddress_; }

    [[nodiscard]] QApplication& application() { return application_; }

    [[nodiscard]] QtLogSink& logSink() { return logSink_; }

    [[nodiscard]] const foundation::LoggerFactory& loggers() const { return loggers_; }

    [[nodiscard]] QtEventLoop& eventLoop() { return eventLoop_; }

    [[nodiscard]] QtMainQueue& mainQueue() { return mainQueue_; }

  private:
    TerminationSignals terminationSignals_;
    std::string busAddress_ = adoptBusAddress();
    QApplication application_;
    InstanceLock lock_;
    QtLogSink logSink_;
    foundation::LoggerFactory loggers_{logSink_, std::string(applicationId)};
    QtEventLoop eventLoop_;
    QtMainQueue mainQueue_;
};

/// The services that depend on the display server.
struct DisplayServices {
    std::unique_ptr<Pasteboard> pasteboard;
    std::function<void()> handOverPasteboard;
    std::unique_ptr<hotkey::EventHotKeyService> hotKeys;
    std::function<void(RefusalHandlers)> setRefusalHandlers;
    NativeModifiers nativeModifiers;
    TrayManagerSelectionMaker makeTrayManagerSelection;
};

/// nullopt if the server does not support hot keys.
std::optional<DisplayServices> makeX11Services(DesktopProcess& process,
                                               std::unique_ptr<X11Connection> connection) {
    auto hotKeys = X11EventHotKeyService::open(process.eventLoop(), process.mainQueue());
    if (!hotKeys) {
        return std::nullopt;
    }
    auto pasteboard = std::make_unique<X11Pasteboard>(
        std::move(connection), process.eventLoop(), process.mainQueue(), process.loggers());
    auto handOver = [pasteboard = pasteboard.get()] { pasteboard->handOver(); };
    auto nativeModifiers = [hotKeys = hotKeys.get()](std::uint32_t state) {
        return hotKeys->modifierFlags(state);
    };
    auto setRefusalHandlers = [hotKeys = hotKeys.get()](RefusalHandlers handlers) {
        hotKeys->setRefusalHandlers(std::move(handlers));
    };
    return DisplayServices{
        .pasteboard = std::move(pasteboard),
        .handOverPasteboard = std::move(handOver),
        .hotKeys = std::move(hotKeys),
        .setRefusalHandlers = std::move(setRefusalHandlers),
        .nativeModifiers = std::move(nativeModifiers),
        .makeTrayManagerSelection = [&eventLoop = process.eventLoop()](auto didChange) {
            return X11TrayManagerSelection::open(eventLoop, std::move(didChange));
        }};
}

struct LinuxServices {
    LinuxServices(std::unique_ptr<DesktopProcess> desktopProcess, DisplayServices displayServices)
        : process(std::move(desktopProcess)), display(std::move(displayServices)) {}

    std::unique_ptr<DesktopProcess> process;
    DisplayServices display;
    QtLogSink& logSink = process->logSink();
    QtMainQueue& mainQueue = process->mainQueue();
    Pasteboard& pasteboard = *display.pasteboard;
    hotkey::EventHotKeyService& eventHotKeyService = *display.hotKeys;
    SystemClock clock;
    LocalCalendar calendar;
    QThreadPool diskThread;
    FileUserDefaults userDefaults{
        FileUserDefaults::defaultPath(), mainQueue, diskThread, process->loggers()};
    FileStandardOutput standardOutput;
    LinuxAccessibilityTrust accessibilityTrust;
    QtAlerts alerts;
    QtWorkspace workspace;
    DBusApplication application{bringAllToFront,
                                [](bool isEnabled) { return Autostart().setEnabled(isEnabled); }};
    DesktopNotifications notifications;
    TrayImages images;
    TrayStatusBar statusBar{display.makeTrayManagerSelection};
    QtToolkit toolkit;
    QtKeyDownMonitors keyDownMonitors{display.nativeModifiers};
    SessionBus sessionBus{process->busAddress(), [this](const auto& bus) {
                              if (bus.isConnected()) {
                                  application.joinBus(bus);
                                  connectAccessibility();
                              }
                              notifications.setBus(bus);
                              statusBar.setBus(bus);
                          }};
    std::unique_ptr<FileDescriptorWatch> terminationWatch =
        process->watchTermination([] { QApplication::quit(); });
};

class LinuxPlatform final : public PlatformOf<LinuxServices> {
  public:
    LinuxPlatform(std::unique_ptr<DesktopProcess> process,
                  DisplayServices display,
                  const std::string& limitation)
        : PlatformOf(std::move(process), std::move(display)) {
        if (!limitation.empty()) {
            logger_.error("%{public}s", limitation);
        }
        services().display.setRefusalHandlers(
            {.didRefuse = [this](const auto& combo) { reportRefusal(combo); },
             .didBecomeFree =
                 [this] {
                     services().application.carryOutLater(&Application::Requests::retryShortcut);
                 }});
        // What was copied and what was counted must also survive the end of the session.
        QApplication& application = services().process->application();
        QObject::connect(
            &application, &QApplication::commitDataRequest, &application, [this] { save(); });
    }

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        return std::nullopt;
    }

    int run(const std::function<void()>& didFinishLaunching) override {
        didFinishLaunching();
        // The shortcut does not wait for the pictures.
        QApplication::setWindowIcon(windowIcon());
        // Not QApplication's exec(), which waits for the session bus: see connectAccessibility().
        const int exitCode = QCoreApplication::exec();
        save();
        return exitCode;
    }

  private:
    void reportRefusal(const hotkey::KeyCombo& combo) {
        const std::string shortcut = shortcutText(combo.key().value(), combo.modifiers());
        logger_.error("Another program has the shortcut %{public}s", shortcut);
        services().notifications.show(
            {.title = shortcut + " is used by another program",
             .body = "Choose a different shortcut in the preferences. If the other program gives "
                     "this one up, it works without any further steps.",
             .actionTitle = "Open Preferences",
             .action = [this] {
                 services().application.carryOutLater(&Application::Requests::openPreferences);
             }});
    }

    void save() {
        services().userDefaults.flush();
        services().display.handOverPasteboard();
    }

    foundation::Logger logger_ = services().process->loggers().logger("LinuxPlatform");
};

} // namespace

/// The one place that chooses among the backends of Linux desktops, once at the start.
PlatformOrNot makePlatform(int& argc, char** argv) {
    prepareProcess();
    const std::string x11Display = environmentVariable("DISPLAY");
    auto connection = x11Display.empty() ? nullptr : X11Connection::open();
    const auto chosen = choose({.x11Display = x11Display,
                                .hasX11Server = connection != nullptr,
                                .isWayland = !environmentVariable("WAYLAND_DISPLAY").empty(),
                                .qtPlugin = environmentVariable("QT_QPA_PLATFORM")});
    if (const auto* none = std::get_if<NoPlatform>(&chosen)) {
        return *none;
    }
    const auto& choice = std::get<Choice>(chosen);
    setenv("QT_QPA_PLATFORM", choice.qtPlugin.c_str(), 1);
    // Otherwise newer versions of Qt ask the desktop portal for a colour picker, and wait for the
    // session bus.
    setenv("QT_NO_XDG_DESKTOP_PORTAL", "1", 1);

    auto process = std::make_unique<DesktopProcess>(argc, argv);
    // The toolkit has removed its own arguments.
    if (argc > 1) {
        return UnknownArgument{argv[1]};
    }
    switch (process->instance()) {
    case Instance::first:
        break;
    case Instance::second:
        return AlreadyRunning{};
    case Instance::unreachable:
        return NoPlatform{"it is already running, but cannot be reached over the session bus"};
    }
    auto display = makeX11Services(*process, std::move(connection));
    if (!display) {
        return NoPlatform{"the X display " + x11Display +
                          " has no keyboard extension, so no shortcut can be taken"};
    }
    return std::make_unique<LinuxPlatform>(
        std::move(process), std::move(*display), choice.limitation);
}

} // namespace platform
