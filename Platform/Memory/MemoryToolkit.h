#pragma once

#include "Platform/Memory/MemoryLayoutConstraint.h"
#include "Platform/Memory/MemoryWindow.h"
#include "Platform/Toolkit.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// A toolkit whose windows and views exist in memory alone and tell what was done to them. Main
/// thread only.
class MemoryToolkit final : public Toolkit {
  public:
    [[nodiscard]] std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) override;
    [[nodiscard]] std::shared_ptr<View> makeView(Rect frame) override;
    [[nodiscard]] std::shared_ptr<VerticalStack> makeVerticalStack() override;
    [[nodiscard]] std::shared_ptr<Label> makeLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Label> makeWrappingLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Button> makeButton(std::string title, Action action) override;

    /// A constraint between views that do not stand in each other is a fatal error.
    void activateConstraints(const std::vector<LayoutConstraint>& constraints) override;

    /// The windows that exist, the oldest first.
    [[nodiscard]] const std::vector<MemoryWindow*>& windows() const { return windows_; }

    /// What was put into force, one group for each call.
    [[nodiscard]] const std::vector<std::vector<MemoryLayoutConstraint>>& constraintGroups() const {
        return constraintGroups_;
    }

  private:
    std::vector<MemoryWindow*> windows_;
    std::vector<std::vector<MemoryLayoutConstraint>> constraintGroups_;
};

} // namespace platform
