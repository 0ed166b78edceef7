#include "Pastewise/PastewiseApp.h"

namespace pastewise {

PastewiseApp::PastewiseApp(platform::Platform& platform)
    : platform_(platform),
      loggers_(platform.logSink(), platform.bundleIdentifier().value_or("com.app.pastewise")),
      clipboardManager_(platform.pasteboard(), loggers_),
      hotKeysController_(platform.eventHotKeyService()),
      appDelegate_(clipboardManager_, hotKeysController_, loggers_) {}

int PastewiseApp::main() {
    appDelegate_.applicationDidFinishLaunching();
    return platform_.run();
}

} // namespace pastewise
