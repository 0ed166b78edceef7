#pragma once

#include "Platform/Menu.h"

#include <memory>
#include <string>
#include <vector>

namespace testing_support {

/// A menu like the program's, with titles that are hard to display. Each opening is counted and
/// shown as the title of the first row; chosen rows are recorded.
class SampleMenu final : public platform::MenuDelegate {
  public:
    SampleMenu() {
        menu->addItem(information);
        menu->addItem(
            std::make_shared<platform::MenuItem>("Clear_Saved & Time\u2026", choice("clear")));
        menu->addItem(std::make_shared<platform::MenuItem>(
            "Preferences\u2026", choice("preferences"), platform::KeyEquivalent{","}));
        menu->addItem(platform::MenuItem::separator());
        menu->addItem(std::make_shared<platform::MenuItem>(
            "Quit", choice("quit"), platform::KeyEquivalent{"q"}));
        menu->setDelegate(this);
    }

    ~SampleMenu() override { menu->setDelegate(nullptr); }

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

  private:
    platform::Action choice(const std::string& name) {
        return {.name = name, .perform = [this, name] { chosen.push_back(name); }};
    }
};

} // namespace testing_support
