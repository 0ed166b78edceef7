#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/DesktopSession.h"

#include <cstdint>
#include <memory>
#include <string>

namespace testing_support {

/// A real panel with nothing but a tray, along the lower edge of a private desktop. It shows
/// StatusNotifier items and XEmbed windows.
class PanelSession {
  public:
    enum class Appearance : std::uint8_t { light, dark };

    /// Starts the panel; see start(). The desktop outlives it.
    explicit PanelSession(const DesktopSession& desktop, Appearance appearance = Appearance::light);

    /// Returns once the panel accepts both kinds of icons.
    void start();

    /// Whether the panel has fetched the rows of the icon's menu; an earlier click opens nothing.
    [[nodiscard]] bool hasReadMenu() {
        return menuReading_->standardOutput().find("member=GetGroupProperties") !=
               std::string::npos;
    }

    /// Kills the panel and returns once its tray, a separate process, has ended too.
    void stop();

  private:
    const DesktopSession& desktop_;
    std::unique_ptr<ChildProcess> settingsService_;
    std::unique_ptr<ChildProcess> menuReading_;
    std::unique_ptr<ChildProcess> panel_;
};

} // namespace testing_support
