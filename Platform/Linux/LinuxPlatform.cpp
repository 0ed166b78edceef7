#include "Foundation/Logger.h"
#include "Platform/Linux/DBus/DBusApplication.h"
#include "Platform/Linux/InstanceLock.h"
#include "Platform/Linux/LinuxServices.h"
#include "Platform/Linux/ProcessSetup.h"
#include "Platform/Linux/Qt/QtActivation.h"
#include "Platform/Linux/Qt/QtAlerts.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/Qt/QtKeyDownMonitors.h"
#include "Platform/Linux/Qt/QtLogSink.h"
#include "Platform/Linux/Qt/QtMainQueue.h"
#include "Platform/Linux/Qt/QtToolkit.h"
#include "Platform/Linux/Qt/QtWorkspace.h"
#include "Platform/Linux/SessionChoice.h"
#include "Platform/Linux/Store/FileUserDefaults.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/Linux/Tray/TrayImages.h"
#include "Platform/Linux/Tray/TrayStatusBar.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Linux/X11/X11TrayManagerSelection.h"
#include "Platform/PlatformFactory.h"
#include "Platform/PlatformOf.h"
#include "Platform/Posix/FileStandardOutput.h"
#include "Platform/Posix/SystemClock.h"

#include <QApplication>
#include <QThreadPool>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

namespace {

/// Empty if the variable is not set.
std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// What makes the process a desktop program, whatever the display server: signals, Qt, the log, and
/// the name and the lock that only one process can have.
class DesktopProcess {
  public:
    DesktopProcess(int& argc, char** argv) : application_(argc, argv) {
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

    [[nodiscard]] QApplication& application() { return application_; }

    [[nodiscard]] DBusApplication& busApplication() { return busApplication_; }

    [[nodiscard]] QtLogSink& logSink() { return logSink_; }

    [[nodiscard]] const foundation::LoggerFactory& loggers() const { return loggers_; }

    [[nodiscard]] QtEventLoop& eventLoop() { return eventLoop_; }

    [[nodiscard]] QtMainQueue& mainQueue() { return mainQueue_; }

  private:
    TerminationSignals terminationSignals_;
    QApplication application_;
    DBusApplication busApplication_{bringAllToFront};
    std::optional<InstanceLock> lock_;
    QtLogSink logSink_;
    foundation::LoggerFactory loggers_{logSink_, std::string(applicationId)};
    QtEventLoop eventLoop_;
    QtMainQueue mainQueue_;
    std::unique_ptr<FileDescriptorWatch> terminationWatch_ =
        terminationSignals_.deliver(eventLoop_, [] { QApplication::quit(); });
};

/// The services that depend on the display server.
struct DisplayServices {
    std::unique_ptr<Pasteboard> pasteboard;
    std::function<void()> handOverPasteboard;
    std::unique_ptr<hotkey::EventHotKeyService> hotKeys;
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
    return DisplayServices{
        .pasteboard = std::move(pasteboard),
        .handOverPasteboard = std::move(handOver),
        .hotKeys = std::move(hotKeys),
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
    DBusApplication& application = process->busApplication();
    TrayImages images;
    TrayStatusBar statusBar{application.connection(), display.makeTrayManagerSelection};
    QtToolkit toolkit;
    QtKeyDownMonitors keyDownMonitors{display.nativeModifiers};
};

class LinuxPlatform final : public PlatformOf<LinuxServices> {
  public:
    LinuxPlatform(std::unique_ptr<DesktopProcess> process,
                  DisplayServices display,
                  const std::string& limitation)
        : PlatformOf(std::move(process), std::move(display)) {
        if (!limitation.empty()) {
            services().process->loggers().logger("LinuxPlatform").error("%{public}s", limitation);
        }
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
        const int exitCode = QApplication::exec();
        save();
        return exitCode;
    }

  private:
    void save() {
        services().userDefaults.flush();
        services().display.handOverPasteboard();
    }
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

    auto process = std::make_unique<DesktopProcess>(argc, argv);
    if (!process->isFirst()) {
        return AlreadyRunning{};
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
