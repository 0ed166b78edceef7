#pragma once

#include "Foundation/Interface.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/Tray/TrayImages.h"
#include "Platform/Linux/Tray/TrayStatusBar.h"
#include "tests/Platform/Linux/Tray/TrayHostProgram.h"
#include "tests/Support/DesktopSession.h"
#include "tests/Support/SampleMenu.h"
#include "tests/Support/WaitUntil.h"

#include <QApplication>
#include <QDBusConnection>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tray_test {

/// A status bar on a desktop of its own that has no tray at first. Base of what tests it.
class TrayDesktop : foundation::Pinned {
  public:
  protected:
    TrayDesktop();
    ~TrayDesktop();

    /// Gives the status bar a connection to the session's bus, connected or not. Called once by the
    /// constructor.
    void connectToBus();

    /// Turns the event loop until `condition` holds or patience ends.
    static bool turnUntil(const std::function<bool()>& condition,
                          std::chrono::milliseconds limit = testing_support::patience);

    /// Makes the item, with a picture of that glyph and the menu.
    void makeItem(const std::string& glyph = "P");

    /// The picture that the program shows with that glyph.
    [[nodiscard]] std::shared_ptr<platform::Image> picture(const std::string& glyph);

    [[nodiscard]] platform::TrayManagerSelectionMaker managerSelectionMaker();

    void startHost(const std::vector<std::string>& options = {});

    /// Has the host run a command and returns what it prints in the end.
    nlohmann::json ask(const std::string& command);

    testing_support::DesktopSession session_;

  private:
    /// For the toolkit, which reads where the display is from there.
    struct AdoptedEnvironment {
        explicit AdoptedEnvironment(const testing_support::DesktopSession& session);
    };

    static inline char programName[] = "test";
    static inline char* arguments[] = {programName, nullptr};
    int argumentCount_ = 1;
    AdoptedEnvironment environment_{session_};
    QApplication application_{argumentCount_, arguments};
    platform::QtEventLoop eventLoop_;

  protected:
    testing_support::SampleMenu sample_;
    platform::TrayImages images_;
    platform::TrayStatusBar statusBar_;
    std::unique_ptr<platform::StatusItem> item_;
    std::unique_ptr<TrayHostProgram> host_;
};

} // namespace tray_test
