#pragma once

#include "tests/Desktop/ResidentTest.h"
#include "tests/Platform/Linux/Tray/TrayHostProgram.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <vector>

namespace program_test {

/// The program in the tray of a desktop.
class TrayTest : public ResidentTest {
  protected:
    /// A row of the menu as its user sees it.
    struct Row {
        std::string title = {};
        bool isEnabled = false;
        bool isSeparator = false;
        /// The keys that choose it, such as {"Super", "q"}; empty for none.
        std::vector<std::string> keys = {};
        bool operator==(const Row&) const = default;
    };

    void startTray(const std::vector<std::string>& arguments = {});

    /// Starts the program and waits until the tray shows it.
    void startProgramInTray(const std::map<std::string, std::string>& environment = {});

    /// Has the tray run a command, which is no failure, and returns what it answers.
    nlohmann::json ask(const std::string& command);

    [[nodiscard]] bool waitForTrayEvents(const std::string& event, std::size_t count);

    /// The icons that the tray was given one after another, each different from the one before it.
    [[nodiscard]] std::vector<nlohmann::json> icons();

    [[nodiscard]] bool waitForIcons(std::size_t count);

    /// The rows of the menu, after the program was told that it is about to open.
    [[nodiscard]] std::vector<Row> openMenu();

    /// The titles as they are, without opening the menu.
    [[nodiscard]] std::vector<std::string> titles();

    [[nodiscard]] bool waitForTitle(std::size_t row, const std::string& title);

    void choose(const std::string& title);

    std::unique_ptr<tray_test::TrayHostProgram> tray_;
};

} // namespace program_test
