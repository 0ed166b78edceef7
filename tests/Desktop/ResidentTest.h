#pragma once

#include "tests/Desktop/ProgramTest.h"
#include "tests/Desktop/Screen.h"
#include "tests/Desktop/StoredSettings.h"
#include "tests/Support/ChildProcess.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace program_test {

/// What the log says once for each credit of saved time that is complete.
inline constexpr std::string_view creditedMessage = "Updated time saved display to: ";

/// The program as the desktop knows it between two key presses: its settings, its one instance, its
/// actions, its window.
class ResidentTest : public ProgramTest {
  protected:
    [[nodiscard]] std::filesystem::path settingsPath() const;

    /// What is stored now; none when that is nothing whole.
    [[nodiscard]] std::optional<StoredSettings> settings() const;

    /// Starts the program once more, with its log on. `environment` is set on top of the session's,
    /// `launcher` is a command that the program's own is appended to.
    [[nodiscard]] std::unique_ptr<testing_support::ChildProcess>
    startAgain(const std::map<std::string, std::string>& environment = {},
               std::vector<std::string> launcher = {});

    /// Asks the program over the session bus, as a desktop's own shortcut does, for one of its
    /// actions: "convert" or "preferences".
    [[nodiscard]] std::unique_ptr<testing_support::ChildProcess>
    requestAction(const std::string& name);
    void activate(const std::string& action);

    /// Returns once the program, which has its name on the bus, has handled the keys pressed so
    /// far.
    void awaitEventLoop();

    /// Waits until the program has its name on the session bus, which it takes after its launch.
    void waitForName();

    /// Waits until no checkmark is shown.
    [[nodiscard]] bool waitForEndOfFlash();

    /// Ends the program in the way that its user or the system would, with all that it does then.
    void endProgram();

    /// How many preferences windows are on the screen.
    [[nodiscard]] std::size_t preferencesWindowCount();

    /// Waits for the one preferences window with the keyboard in it and no window above it.
    [[nodiscard]] bool waitForPreferencesInFront();

    /// Opens a window of another program in front of all others.
    [[nodiscard]] std::unique_ptr<testing_support::ChildProcess> openOtherWindow();

    /// Makes the desktop a plain light one.
    void tidyDesktop();

    /// What a part of the screen shows.
    [[nodiscard]] Picture look(const ScreenArea& area);

    /// Keeps a picture of a part of the screen for people to look at, in the build folder.
    void takeScreenshot(const std::string& name, const ScreenArea& area);

    /// Moves the pointer there and presses a button of it, 1 for the left one.
    void clickAt(int x, int y, int button = 1);

  private:
    [[nodiscard]] std::string output(const std::vector<std::string>& command);
    /// Openbox may read an event and not handle it until the next one comes. This sends one.
    void nudgeWindowManager();
    [[nodiscard]] std::string uppermostWindow();
    [[nodiscard]] bool isInFront(const std::string& title);
};

} // namespace program_test
