#include "Platform/Memory/MemoryWindow.h"

#include "Platform/Memory/MemoryViewNode.h"

namespace platform {

MemoryWindow::MemoryWindow(Rect contentRect,
                           WindowStyle style,
                           WindowBacking backing,
                           std::vector<MemoryWindow*>& windows)
    : contentRect_(contentRect), style_(style), backing_(backing), windows_(windows) {
    windows_.push_back(this);
}

MemoryWindow::~MemoryWindow() {
    std::erase(windows_, this);
}

void MemoryWindow::setContentViewController(ViewController& controller) {
    contentViewController_ = &controller;
    dynamic_cast<MemoryViewNode&>(*controller.view()).setFrame({{0, 0}, contentRect_.size});
}

void MemoryWindow::makeKeyAndOrderFront() {
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

} // namespace platform
