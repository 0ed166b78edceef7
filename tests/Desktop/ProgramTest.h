#pragma once

#include "tests/Support/ChildProcess.h"
#include "tests/Support/DesktopSession.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace program_test {

inline constexpr std::string_view wroteMessage = "Successfully wrote to clipboard";
inline constexpr std::string_view noTextMessage = "No text found in clipboard";

/// How often `part` occurs in `text`.
[[nodiscard]] std::size_t countOf(std::string_view text, std::string_view part);

/// The program on a private desktop, among other programs and with real keys.
class ProgramTest : public testing::Test {
  protected:
    /// Returns once the program has its shortcut. `additional` overrides the session's environment.
    void startProgram(const std::map<std::string, std::string>& additional = {});

    /// Starts a program that owns the clipboard: see ClipboardOwner.cpp.
    [[nodiscard]] std::unique_ptr<testing_support::ChildProcess>
    startOwner(std::vector<std::string> arguments, const std::string& standardInput = {});

    /// What another program receives from the clipboard as `target`.
    [[nodiscard]] std::string paste(const std::string& target);

    void pressShortcut();

    /// How often the message occurs in the program's log so far.
    [[nodiscard]] std::size_t logged(std::string_view message);

    [[nodiscard]] bool waitForLog(std::string_view message, std::size_t count = 1);

    /// Presses the shortcut and waits for the conversion to succeed.
    void convert();

    /// Presses the shortcut, which must not convert, and expects the clipboard to keep its owner.
    void expectNoText(testing_support::ChildProcess& owner);

    /// Runs a command, which must succeed, and returns its output.
    std::string runTool(const std::vector<std::string>& command);

    testing_support::DesktopSession session_;
    testing_support::FakeKeyboard keyboard_{session_.display()};
    std::unique_ptr<testing_support::ChildProcess> program_;
};

} // namespace program_test
