#pragma once

#include "Foundation/Interface.h"
#include "Platform/Action.h"
#include "Platform/Button.h"
#include "Platform/Geometry.h"
#include "Platform/Label.h"
#include "Platform/LayoutConstraint.h"
#include "Platform/View.h"
#include "Platform/Window.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// Makes windows and what stands in them. Everything made belongs to whoever asked for it and ends
/// before the toolkit. Main thread only.
class Toolkit : public foundation::Interface {
  public:
    /// `contentRect` is the place of the window's content; its origin counts from the lower left
    /// corner of the screen.
    [[nodiscard]] virtual std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) = 0;

    /// An empty view to put others into.
    [[nodiscard]] virtual std::shared_ptr<View> makeView(Rect frame) = 0;
    [[nodiscard]] virtual std::shared_ptr<VerticalStack> makeVerticalStack() = 0;

    /// A label of one line, or one that wraps what is longer.
    [[nodiscard]] virtual std::shared_ptr<Label> makeLabel(std::string text) = 0;
    [[nodiscard]] virtual std::shared_ptr<Label> makeWrappingLabel(std::string text) = 0;

    /// `action` is called from the event loop each time the user presses the button.
    [[nodiscard]] virtual std::shared_ptr<Button> makeButton(std::string title, Action action) = 0;

    /// Puts all these rules into force together. Their views stand in each other already.
    virtual void activateConstraints(const std::vector<LayoutConstraint>& constraints) = 0;
};

} // namespace platform
