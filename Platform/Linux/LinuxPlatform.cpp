#include "Foundation/LoggerFactory.h"
#include "Platform/Linux/DBus/DBusApplication.h"
#include "Platform/Linux/InstanceLock.h"
#include "Platform/Linux/LinuxAccessibilityTrust.h"
#include "Platform/Linux/LocalCalendar.h"
#include "Platform/Linux/Qt/QtAlerts.h"
#include "Platform/Linux/Qt/QtApplicationControl.h"
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
#include "Platform/Posix/FileStandardOutput.h"
#include "Platform/Posix/SystemClock.h"
#include "Text/Utf8Repair.h"

#include <malloc.h>

#include <QApplication>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

namespace {

/// What the environment variable holds; empty when it is not set.
std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// What makes a process a program of the desktop: how it is ended, Qt, and its name that no second
/// process can have.
class DesktopProcess {
  public:
    DesktopProcess(int& argc, char** argv) : application_(argc, argv) {
        QApplication::setApplicationName("pastewise");
        QApplication::setDesktopFileName("com.app.pastewise");
        QApplication::setQuitOnLastWindowClosed(false);
    }

    /// Whether this is the only process of its kind. Where another one could be told, it was.
    [[nodiscard]] bool isFirst() {
        switch (busApplication_.claim()) {
        case DBusApplication::Claim::first:
            return true;
        case DBusApplication::Claim::alreadyRunning:
            return false;
        case DBusApplication::Claim::noBus:
            break;
        }
        lock_.emplace(InstanceLock::defaultPath());
        return lock_->result() != InstanceLock::Result::taken;
    }

    [[nodiscard]] const TerminationSignals& terminationSignals() const {
        return terminationSignals_;
    }

    [[nodiscard]] QApplication& application() { return application_; }

    [[nodiscard]] DBusApplication& busApplication() { return busApplication_; }

  private:
    TerminationSignals terminationSignals_;
    QApplication application_;
    DBusApplication busApplication_;
    std::optional<InstanceLock> lock_;
};

class DesktopApplication final : public Application {
  public:
    explicit DesktopApplication(DBusApplication& busApplication)
        : busApplication_(busApplication) {}

    void setRequests(Requests requests) override {
        busApplication_.setRequests(std::move(requests));
    }

    void activateIgnoringOtherApps() override { QtApplicationControl::activateIgnoringOtherApps(); }

    void terminate() override { QtApplicationControl::terminate(); }

  private:
    DBusApplication& busApplication_;
};

/// A desktop on an X server: clipboard, hot keys and what belongs to the keyboard over XCB, the
/// tray and the program's name over the session bus, everything else through Qt.
class X11DesktopPlatform final : public Platform {
  public:
    X11DesktopPlatform(std::unique_ptr<DesktopProcess> process,
                       std::unique_ptr<X11Connection> connection)
        : process_(std::move(process)),
          pasteboard_(std::move(connection), eventLoop_, mainQueue_, loggers_, text::repairUtf8),
          eventHotKeyService_(X11EventHotKeyService::open(eventLoop_, mainQueue_)) {
        if (!environmentVariable("WAYLAND_DISPLAY").empty()) {
            loggers_.logger("LinuxPlatform")
                .error(
                    "In a Wayland session the shortcut works only while an X11 window is in front");
        }
        // What was copied and what was counted outlive the session as they outlive the program.
        QApplication& application = process_->application();
        QObject::connect(
            &application, &QApplication::commitDataRequest, &application, [this] { save(); });
    }

    [[nodiscard]] bool hasHotKeys() const { return eventHotKeyService_ != nullptr; }

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        return std::nullopt;
    }

    [[nodiscard]] foundation::LogSink& logSink() override { return logSink_; }

    [[nodiscard]] MainQueue& mainQueue() override { return mainQueue_; }

    [[nodiscard]] Pasteboard& pasteboard() override { return pasteboard_; }

    [[nodiscard]] hotkey::EventHotKeyService& eventHotKeyService() override {
        return *eventHotKeyService_;
    }

    [[nodiscard]] Clock& clock() override { return clock_; }

    [[nodiscard]] Calendar& calendar() override { return calendar_; }

    [[nodiscard]] UserDefaults& userDefaults() override { return userDefaults_; }

    [[nodiscard]] StandardOutput& standardOutput() override { return standardOutput_; }

    [[nodiscard]] AccessibilityTrust& accessibilityTrust() override { return accessibilityTrust_; }

    [[nodiscard]] Alerts& alerts() override { return alerts_; }

    [[nodiscard]] Workspace& workspace() override { return workspace_; }

    [[nodiscard]] Application& application() override { return application_; }

    [[nodiscard]] Images& images() override { return images_; }

    [[nodiscard]] StatusBar& statusBar() override { return statusBar_; }

    [[nodiscard]] Toolkit& toolkit() override { return toolkit_; }

    [[nodiscard]] KeyDownMonitors& keyDownMonitors() override { return keyDownMonitors_; }

    int run(const std::function<void()>& didFinishLaunching) override {
        didFinishLaunching();
        const int exitCode = QApplication::exec();
        save();
        return exitCode;
    }

  private:
    void save() {
        userDefaults_.flush();
        pasteboard_.handOver();
    }

    std::unique_ptr<DesktopProcess> process_;
    QtLogSink logSink_;
    foundation::LoggerFactory loggers_{logSink_, "com.app.pastewise"};
    QtMainQueue mainQueue_;
    QtEventLoop eventLoop_;
    std::unique_ptr<FileDescriptorWatch> terminationWatch_ =
        process_->terminationSignals().deliver(eventLoop_, [] { QApplication::quit(); });
    X11Pasteboard pasteboard_;
    std::unique_ptr<X11EventHotKeyService> eventHotKeyService_;
    SystemClock clock_;
    LocalCalendar calendar_;
    WorkerThread diskWorker_;
    PlistUserDefaults userDefaults_{
        PlistUserDefaults::defaultPath(), mainQueue_, diskWorker_, loggers_};
    FileStandardOutput standardOutput_;
    LinuxAccessibilityTrust accessibilityTrust_;
    QtAlerts alerts_;
    QtWorkspace workspace_;
    DesktopApplication application_{process_->busApplication()};
    TrayImages images_;
    TrayStatusBar statusBar_{
        process_->busApplication().connection(), [this](std::function<void()> didChange) {
            return X11TrayManagerSelection::open(eventLoop_, std::move(didChange));
        }};
    QtToolkit toolkit_;
    X11KeyboardModifiers keyboardModifiers_;
    QtKeyDownMonitors keyDownMonitors_{&keyboardModifiers_};
};

} // namespace

/// The one place that chooses among the backends of Linux desktops, once at the start.
PlatformOrNot makePlatform(int& argc, char** argv) {
    fillStandardDescriptors();
    // The threads beside the main one allocate a little now and then. With heaps of their own the
    // program would grow for days before it stopped.
    static_cast<void>(mallopt(M_ARENA_MAX, 1));
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
    auto platform = std::make_unique<X11DesktopPlatform>(std::move(process), std::move(connection));
    if (!platform->hasHotKeys()) {
        return NoPlatform{"the X display " + display +
                          " has no keyboard extension, so no shortcut can be taken"};
    }
    return platform;
}

} // namespace platform
