#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/DesktopSession.h"

#include <cstdint>
#include <memory>

namespace testing_support {

/// A real panel with a tray, and nothing else on it, along the lower edge of a test's desktop. It
/// shows icons of both kinds: StatusNotifier items and XEmbed windows.
class PanelSession {
  public:
    enum class Appearance : std::uint8_t { light, dark };

    /// Starts the panel; see start(). The desktop outlives it.
    explicit PanelSession(const DesktopSession& desktop, Appearance appearance = Appearance::light);

    /// Returns once the panel takes icons of both kinds.
    void start();

    /// Ends the panel at once, as a crash of it would.
    void stop();

  private:
    const DesktopSession& desktop_;
    std::unique_ptr<ChildProcess> settingsService_;
    std::unique_ptr<ChildProcess> panel_;
};

} // namespace testing_support
