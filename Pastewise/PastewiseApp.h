#pragma once

#include "Foundation/LoggerFactory.h"
#include "HotKey/HotKeysController.h"
#include "Pastewise/AppDelegate.h"
#include "Pastewise/ClipboardManager.h"
#include "Platform/Platform.h"

namespace pastewise {

/// Puts the program together from a platform, which outlives it: every process-wide instance is
/// made here, once. Main thread only.
class PastewiseApp {
  public:
    explicit PastewiseApp(platform::Platform& platform);

    /// Launches the program and runs it until it is asked to end. Returns its exit code.
    int main();

  private:
    platform::Platform& platform_;
    foundation::LoggerFactory loggers_;
    ClipboardManager clipboardManager_;
    hotkey::HotKeysController hotKeysController_;
    AppDelegate appDelegate_;
};

} // namespace pastewise
