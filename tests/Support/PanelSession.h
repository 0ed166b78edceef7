#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/DesktopSession.h"

#include <cstdint>
#include <memory>
#include <string>

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

    /// Whether the panel has asked for the rows of the icon's menu; a click before opens nothing.
    [[nodiscard]] bool hasReadMenu() {
        return menuReading_->standardOutput().find("member=GetGroupProperties") !=
               std::string::npos;
    }

    /// Ends the panel at once, as a crash of it would, and returns once its tray, a process of its
    /// own that notices, is gone as well.
    void stop();

  private:
    const DesktopSession& desktop_;
    std::unique_ptr<ChildProcess> settingsService_;
    std::unique_ptr<ChildProcess> menuReading_;
    std::unique_ptr<ChildProcess> panel_;
};

} // namespace testing_support
