#include "Platform/Memory/MemoryToolkit.h"

#include "Foundation/FatalError.h"
#include "Platform/Memory/MemoryButton.h"
#include "Platform/Memory/MemoryLabel.h"
#include "Platform/Memory/MemoryVerticalStack.h"
#include "Platform/Memory/MemoryView.h"

#include <utility>

namespace platform {

std::unique_ptr<Window>
MemoryToolkit::makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) {
    return std::make_unique<MemoryWindow>(contentRect, style, backing, windows_);
}

std::shared_ptr<View> MemoryToolkit::makeView(Rect frame) {
    return std::make_shared<MemoryView>(frame);
}

std::shared_ptr<VerticalStack> MemoryToolkit::makeVerticalStack() {
    return std::make_shared<MemoryVerticalStack>();
}

std::shared_ptr<Label> MemoryToolkit::makeLabel(std::string text) {
    return std::make_shared<MemoryLabel>(std::move(text), false);
}

std::shared_ptr<Label> MemoryToolkit::makeWrappingLabel(std::string text) {
    return std::make_shared<MemoryLabel>(std::move(text), true);
}

std::shared_ptr<Button> MemoryToolkit::makeButton(std::string title, Action action) {
    return std::make_shared<MemoryButton>(std::move(title), std::move(action));
}

void MemoryToolkit::activateConstraints(const std::vector<LayoutConstraint>& constraints) {
    std::vector<MemoryLayoutConstraint> group;
    for (const LayoutConstraint& constraint : constraints) {
        if (constraint.second != nullptr &&
            !MemoryViewNode::of(*constraint.second).holds(*constraint.first)) {
            foundation::fatalError("a constraint's first view does not stand in its second one");
        }
        group.push_back({.first = constraint.first,
                         .anchor = constraint.anchor,
                         .relation = constraint.relation,
                         .second = constraint.second,
                         .constant = constraint.constant});
    }
    constraintGroups_.push_back(std::move(group));
}

} // namespace platform
