#pragma once

#include "Platform/Linux/Qt/QtToolkit.h"
#include "Platform/Views.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A window with the structure of the program's preferences: a stack of a title, a smaller stack in
/// a container, a button in a container, text that wraps, and a button. Notes the calls to its view
/// controller.
class FormWindow {
  public:
    FormWindow();

    platform::QtToolkit toolkit;
    std::vector<std::string> notes;
    std::function<void()> onRecord;
    std::function<void()> onReset;

    std::shared_ptr<platform::VerticalStack> stack = toolkit.makeVerticalStack();
    std::shared_ptr<platform::Label> title = toolkit.makeLabel("Keyboard Shortcut");
    std::shared_ptr<platform::View> display = toolkit.makeView({});
    std::shared_ptr<platform::VerticalStack> displayStack = toolkit.makeVerticalStack();
    std::shared_ptr<platform::Label> caption = toolkit.makeLabel("Current Shortcut:");
    std::shared_ptr<platform::Label> shortcut = toolkit.makeLabel("No shortcut set");
    std::shared_ptr<platform::View> recordContainer = toolkit.makeView({});
    std::shared_ptr<platform::Button> record = toolkit.makeButton(
        "Record Shortcut", {.name = "record", .perform = [this] { call(onRecord); }});
    std::shared_ptr<platform::Label> status =
        toolkit.makeWrappingLabel("Ready to record - Click 'Record Shortcut' to begin");
    std::shared_ptr<platform::Button> reset = toolkit.makeButton(
        "Reset to Default", {.name = "reset", .perform = [this] { call(onReset); }});

  private:
    class Controller final : public platform::ViewController {
      public:
        explicit Controller(FormWindow& form) : form_(form) {}

        void loadView() override;

        void viewWillAppear() override { form_.notes.emplace_back("will appear"); }

        void viewDidLayout() override { form_.notes.emplace_back("did layout"); }

        void viewDidDisappear() override { form_.notes.emplace_back("did disappear"); }

      private:
        FormWindow& form_;
    };

    static void call(const std::function<void()>& action) {
        if (action) {
            action();
        }
    }

    Controller controller_{*this};

  public:
    /// Titled "Form". Destroyed before the controller.
    std::unique_ptr<platform::Window> window =
        toolkit.makeWindow({{0, 0}, {400, 350}}, {.isTitled = true, .isClosable = true}, {});
};
