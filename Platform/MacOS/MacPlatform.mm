#import "Platform/MacOS/MacApplication.h"
#import "Platform/MacOS/MacEventHotKeyService.h"
#import "Platform/MacOS/MacImages.h"
#import "Platform/MacOS/MacKeyDownMonitors.h"
#import "Platform/MacOS/MacLogSink.h"
#import "Platform/MacOS/MacMainQueue.h"
#import "Platform/MacOS/MacPasteboard.h"
#import "Platform/MacOS/MacPermissions.h"
#import "Platform/MacOS/MacStatusBar.h"
#import "Platform/MacOS/MacTime.h"
#import "Platform/MacOS/MacUserDefaults.h"
#import "Platform/MacOS/MacViews.h"
#include "Platform/Platform.h"
#include "Platform/PlatformOf.h"
#include "Platform/Posix/PosixServices.h"

#include <csignal>

namespace platform {

namespace {

struct MacServices {
    // The application object opens files, and a closed standard output would become one of them.
    FileStandardOutput standardOutput;
    MacApplication application;
    MacLogSink logSink;
    MacMainQueue mainQueue;
    MacPasteboard pasteboard{[NSPasteboard generalPasteboard],
                             foundation::Logger(logSink, applicationId, "MacPasteboard")};
    MacEventHotKeyService eventHotKeyService;
    SystemClock clock;
    MacCalendar calendar;
    MacUserDefaults userDefaults{[NSUserDefaults standardUserDefaults]};
    MacAccessibilityTrust accessibilityTrust;
    MacAlerts alerts;
    MacWorkspace workspace;
    MacImages images;
    MacStatusBar statusBar;
    MacToolkit toolkit;
    MacKeyDownMonitors keyDownMonitors;
};

class MacPlatform final : public PlatformOf<MacServices> {
  public:
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        NSString* const identifier = [[NSBundle mainBundle] bundleIdentifier];
        return identifier == nil ? std::nullopt : std::optional(utf8String(identifier));
    }

    int run(const std::function<void()>& didFinishLaunching) override {
        services().application.run(didFinishLaunching);
        return 0;
    }
};

} // namespace

PlatformOrNot makePlatform(int& /*argc*/, char** /*argv*/) {
    // Writing to a pipe without a reader must not end the program.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    return std::make_unique<MacPlatform>();
}

} // namespace platform
