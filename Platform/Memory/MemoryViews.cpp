#include "Platform/Memory/MemoryViews.h"

#include "Foundation/FatalError.h"

#include <algorithm>
#include <utility>

namespace platform {

const MemoryViewNode& MemoryViewNode::of(const View& view) {
    return dynamic_cast<const MemoryViewNode&>(view);
}

bool MemoryViewNode::holds(const View& other) const {
    return std::any_of(subviews_.begin(), subviews_.end(), [&other](const auto& subview) {
        return subview.get() == &other || of(*subview).holds(other);
    });
}

MemoryWindow::MemoryWindow(Rect contentRect,
                           WindowStyle style,
                           WindowBacking backing,
                           std::vector<MemoryWindow*>& windows,
                           std::shared_ptr<Journal> journal)
    : Journaled(std::move(journal)),
      contentRect_(contentRect),
      style_(style),
      backing_(backing),
      windows_(windows) {
    windows_.push_back(this);
}

MemoryWindow::~MemoryWindow() {
    std::erase(windows_, this);
}

void MemoryWindow::setContentViewController(ViewController& controller) {
    note("set content view controller");
    contentViewController_ = &controller;
    dynamic_cast<MemoryViewNode&>(*controller.view()).setFrame({{0, 0}, contentRect_.size});
}

void MemoryWindow::makeKeyAndOrderFront() {
    note("show window");
    ++keyAndFrontCount_;
    if (isVisible_) {
        return;
    }
    isVisible_ = true;
    if (contentViewController_ != nullptr) {
        contentViewController_->viewWillAppear();
        contentViewController_->view()->layoutSubtreeIfNeeded();
        contentViewController_->viewDidLayout();
    }
}

void MemoryWindow::close() {
    if (!isVisible_) {
        return;
    }
    isVisible_ = false;
    if (contentViewController_ != nullptr) {
        contentViewController_->viewDidDisappear();
    }
}

std::unique_ptr<Window>
MemoryToolkit::makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) {
    note("make window");
    return std::make_unique<MemoryWindow>(contentRect, style, backing, windows_, journal());
}

std::shared_ptr<View> MemoryToolkit::makeView(Rect frame) {
    note("make view");
    return std::make_shared<MemoryView>(frame);
}

std::shared_ptr<VerticalStack> MemoryToolkit::makeVerticalStack() {
    return std::make_shared<MemoryVerticalStack>();
}

std::shared_ptr<Label> MemoryToolkit::makeLabel(std::string text) {
    return std::make_shared<MemoryLabel>(std::move(text), false, journal());
}

std::shared_ptr<Label> MemoryToolkit::makeWrappingLabel(std::string text) {
    return std::make_shared<MemoryLabel>(std::move(text), true, journal());
}

std::shared_ptr<Button> MemoryToolkit::makeButton(std::string title, Action action) {
    return std::make_shared<MemoryButton>(std::move(title), std::move(action), journal());
}

void MemoryToolkit::activateConstraints(const std::vector<LayoutConstraint>& constraints) {
    std::vector<MemoryLayoutConstraint> group;
    for (const LayoutConstraint& constraint : constraints) {
        if (constraint.second != nullptr &&
            !MemoryViewNode::of(*constraint.second).holds(*constraint.first)) {
            foundation::fatalError("a constraint's first view is not inside its second one");
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
