#pragma once

#include "Platform/Views.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// Windows and views as Qt widgets. Constraints tie a view to the view that it stands in, or give
/// it a minimum width; any other is a programming error and stops the program. Needs a QApplication
/// from the first call on, and nothing before.
class QtToolkit final : public Toolkit {
  public:
    [[nodiscard]] std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) override;
    [[nodiscard]] std::shared_ptr<View> makeView(Rect frame) override;
    [[nodiscard]] std::shared_ptr<VerticalStack> makeVerticalStack() override;
    [[nodiscard]] std::shared_ptr<Label> makeLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Label> makeWrappingLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Button> makeButton(std::string title, Action action) override;
    void activateConstraints(const std::vector<LayoutConstraint>& constraints) override;
};

} // namespace platform
