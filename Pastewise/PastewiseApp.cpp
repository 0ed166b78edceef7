#include "Pastewise/PastewiseApp.h"

#include <chrono>

namespace pastewise {

namespace {

/// Longer than the 660 ms after which a held key starts to repeat. A desktop repeats its shortcut
/// with the key and does not report the key's release.
constexpr std::chrono::milliseconds repeatSilence{750};

} // namespace

PastewiseApp::PastewiseApp(platform::Platform& platform)
    : platform_(platform),
      shared_(platform),
      appDelegate_(platform, shared_),
      appState_(shared_.analyticsManager(),
                platform.userDefaults(),
                platform.clock(),
                shared_.notificationCenter(),
                shared_.loggers()),
      convertDebouncer_(platform.mainQueue(), repeatSilence) {}

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
        {.convert =
             [this] {
                 const auto handler = shared_.shortcutManager().shortcutHandler;
                 if (convertDebouncer_.accepts() && handler) {
                     handler();
                 }
             },
         .openPreferences = [this] { appDelegate_.openPreferences(); }});
}

} // namespace pastewise
