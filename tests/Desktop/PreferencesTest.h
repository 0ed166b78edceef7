#pragma once

#include "tests/Desktop/TrayTest.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace program_test {

/// The status texts of the preferences window.
inline constexpr std::string_view readyStatus =
    "Ready to record - Click 'Record Shortcut' to begin";
inline constexpr std::string_view recordingStatus = "Recording... Press your desired shortcut now";
inline constexpr std::string_view completedStatus = "Shortcut recorded successfully!";

/// The program with its preferences read over AT-SPI and used with real keys and clicks.
class PreferencesTest : public TrayTest {
  protected:
    /// Starts the program with accessibility switched on.
    void startReadableProgram();

    /// Opens the window and waits until it is readable and has the focus.
    void openPreferences();

    /// Waits until the window is readable and has the focus.
    void awaitPreferences();

    /// Waits until an element in the window has this name.
    [[nodiscard]] bool waitUntilShown(std::string_view name);

    /// Whether an element in the window has this name.
    [[nodiscard]] bool isShown(std::string_view name);

    /// The names of the window's elements, in order.
    [[nodiscard]] std::vector<std::string> names();

    /// Moves the focus to the button with Tab.
    void focus(const std::string& button);

    /// Moves the focus to the button with Tab and presses it with Space.
    void pressByKeyboard(const std::string& button);

    /// Clicks the button.
    void click(const std::string& button);

    /// Presses the record button and waits until keys are recorded.
    void startRecording();

    /// Closes the window through the window manager.
    void closePreferences();

  private:
    [[nodiscard]] std::vector<nlohmann::json> read();
    [[nodiscard]] std::string focusedName();
};

} // namespace program_test
