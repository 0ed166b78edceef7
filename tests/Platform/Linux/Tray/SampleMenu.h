#pragma once

#include "Platform/Menu.h"

#include <memory>
#include <string>
#include <vector>

namespace tray_test {

/// A menu like the program's, with titles that are hard to show. It counts how often it is said to
/// open, gives its first row the count as a title then, and notes which rows were chosen.
class SampleMenu final : public platform::MenuDelegate {
  public:
    SampleMenu() {
        menu->addItem(information);
        menu->addItem(std::make_shared<platform::MenuItem>(
            "Clear_Saved & Time\u2026", [this] { chosen.emplace_back("clear"); }));
        menu->addItem(std::make_shared<platform::MenuItem>(
            "Preferences\u2026",
            [this] { chosen.emplace_back("preferences"); },
            platform::KeyEquivalent{","}));
        menu->addItem(platform::MenuItem::separator());
        menu->addItem(std::make_shared<platform::MenuItem>(
            "Quit", [this] { chosen.emplace_back("quit"); }, platform::KeyEquivalent{"q"}));
        menu->setDelegate(this);
    }

    ~SampleMenu() override { menu->setDelegate(nullptr); }

    SampleMenu(const SampleMenu&) = delete;
    SampleMenu& operator=(const SampleMenu&) = delete;
    SampleMenu(SampleMenu&&) = delete;
    SampleMenu& operator=(SampleMenu&&) = delete;

    void menuWillOpen(platform::Menu& /*menu*/) override {
        ++openingCount;
        if (changesTitle) {
            information->setTitle("Opened: " + std::to_string(openingCount));
        }
    }

    std::shared_ptr<platform::Menu> menu = std::make_shared<platform::Menu>();
    std::shared_ptr<platform::MenuItem> information =
        std::make_shared<platform::MenuItem>("Opened: 0");
    bool changesTitle = true;
    int openingCount = 0;
    std::vector<std::string> chosen;
};

} // namespace tray_test
