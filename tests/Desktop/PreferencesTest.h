#pragma once

#include "tests/Desktop/TrayTest.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace program_test {

/// What the preferences window says in its states.
inline constexpr std::string_view readyStatus =
    "Ready to record - Click 'Record Shortcut' to begin";
inline constexpr std::string_view recordingStatus = "Recording... Press your desired shortcut now";
inline constexpr std::string_view completedStatus = "Shortcut recorded successfully!";

/// The program with its preferences read as a screen reader does, and used by real keys and clicks.
class PreferencesTest : public TrayTest {
  protected:
    /// Starts the program so that its windows can be read.
    void startReadableProgram();

    /// Opens the window and waits until it can be read and has the keyboard.
    void openPreferences();

    /// Waits until the window can be read and has the keyboard.
    void awaitPreferences();

    /// Waits until something in the window has this name.
    [[nodiscard]] bool waitUntilShown(std::string_view name);

    /// Whether something in the window has this name.
    [[nodiscard]] bool isShown(std::string_view name);

    /// The names of all that is in the window, from its first to its last.
    [[nodiscard]] std::vector<std::string> names();

    /// Moves the keyboard to the button by Tab and presses it by the space bar.
    void pressByKeyboard(const std::string& button);

    /// Presses the button with the pointer.
    void click(const std::string& button);

    /// Waits after a button was pressed until keys are recorded.
    void startRecording();

    /// The window in the manner of its user: has the manager of windows close it.
    void closePreferences();

  private:
    [[nodiscard]] std::vector<nlohmann::json> read();
    [[nodiscard]] std::string focusedName();
};

} // namespace program_test
