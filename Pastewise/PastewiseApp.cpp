#include "Pastewise/PastewiseApp.h"

namespace pastewise {

PastewiseApp::PastewiseApp(platform::Platform& platform)
    : platform_(platform),
      shared_(platform),
      appDelegate_(platform, shared_),
      appState_(shared_.analyticsManager(),
                platform.userDefaults(),
                platform.clock(),
                shared_.notificationCenter(),
                shared_.loggers()) {}

PastewiseApp::~PastewiseApp() {
    platform_.application().setRequests({});
}

int PastewiseApp::main() {
    return platform_.run([this] {
        appDelegate_.applicationDidFinishLaunching();
        answerRequests();
    });
}

void PastewiseApp::answerRequests() {
    platform_.application().setRequests(
        {.convert = [this] { appDelegate_.handleConversionRequested(); },
         .openPreferences = [this] { appDelegate_.openPreferences(); },
         .retryShortcut = [this] { shared_.shortcutManager().retry(); }});
}

} // namespace pastewise
