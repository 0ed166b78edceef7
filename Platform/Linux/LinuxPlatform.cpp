#include "Foundation/LoggerFactory.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/Qt/QtLogSink.h"
#include "Platform/Linux/Qt/QtMainQueue.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/PlatformFactory.h"
#include "Text/Utf8Repair.h"

#include <QGuiApplication>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// A desktop on an X server: clipboard and hot keys over XCB, everything else through Qt.
class X11DesktopPlatform final : public Platform {
  public:
    X11DesktopPlatform(int& argc, char** argv, std::unique_ptr<X11Connection> connection)
        : application_(argc, argv),
          pasteboard_(std::move(connection), eventLoop_, mainQueue_, loggers_, text::repairUtf8),
          eventHotKeyService_(X11EventHotKeyService::open(eventLoop_, mainQueue_)) {
        QGuiApplication::setApplicationName("pastewise");
        QGuiApplication::setDesktopFileName("com.app.pastewise");
        QGuiApplication::setQuitOnLastWindowClosed(false);
        if (isSet("WAYLAND_DISPLAY")) {
            loggers_.logger("LinuxPlatform")
                .error(
                    "In a Wayland session the shortcut works only while an X11 window is in front");
        }
        // What was copied outlives the session as it outlives the program.
        QObject::connect(&application_, &QGuiApplication::commitDataRequest, &application_, [this] {
            pasteboard_.handOver();
        });
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

    int run() override {
        const int exitCode = QGuiApplication::exec();
        pasteboard_.handOver();
        return exitCode;
    }

  private:
    TerminationSignals terminationSignals_;
    QGuiApplication application_;
    QtLogSink logSink_;
    foundation::LoggerFactory loggers_{logSink_, "com.app.pastewise"};
    QtMainQueue mainQueue_;
    QtEventLoop eventLoop_;
    std::unique_ptr<FileDescriptorWatch> terminationWatch_ =
        terminationSignals_.deliver(eventLoop_, [] { QGuiApplication::quit(); });
    X11Pasteboard pasteboard_;
    std::unique_ptr<X11EventHotKeyService> eventHotKeyService_;
};

} // namespace

/// The one place that chooses among the backends of Linux desktops, once at the start.
PlatformOrReason makePlatform(int& argc, char** argv) {
    if (!isSet("DISPLAY")) {
        return "there is no X display: DISPLAY is not set";
    }
    auto connection = X11Connection::open();
    if (!connection) {
        return std::string("the X display ") + std::getenv("DISPLAY") + " does not answer";
    }
    // A log line into a pipe that nobody reads any more must not end the program.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    if (!isSet("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "xcb", 1);
    }
    auto platform = std::make_unique<X11DesktopPlatform>(argc, argv, std::move(connection));
    if (!platform->hasHotKeys()) {
        return std::string("the X display ") + std::getenv("DISPLAY") +
               " has no keyboard extension, so no shortcut can be taken";
    }
    return platform;
}

} // namespace platform
