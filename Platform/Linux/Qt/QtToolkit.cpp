#include "Platform/Linux/Qt/QtToolkit.h"

#include "Foundation/FatalError.h"
#include "Platform/Linux/Qt/QtButton.h"
#include "Platform/Linux/Qt/QtConstraintLayout.h"
#include "Platform/Linux/Qt/QtLabel.h"
#include "Platform/Linux/Qt/QtVerticalStack.h"
#include "Platform/Linux/Qt/QtView.h"
#include "Platform/Linux/Qt/QtWindow.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

namespace {

void activate(const LayoutConstraint& constraint) {
    QWidget& first = QtWidgetView::of(*constraint.first).widget();
    if (constraint.relation == LayoutConstraint::Relation::greaterThanOrEqual) {
        if (constraint.second || constraint.anchor != LayoutConstraint::Anchor::width) {
            foundation::fatalError("a minimum for something else than a width");
        }
        const int width = static_cast<int>(std::ceil(constraint.constant));
        first.setMinimumWidth(std::max(first.minimumWidth(), width));
        return;
    }
    QWidget* const container =
        constraint.second ? &QtWidgetView::of(*constraint.second).widget() : nullptr;
    auto* const layout =
        container == nullptr ? nullptr : dynamic_cast<QtConstraintLayout*>(container->layout());
    if (layout == nullptr || constraint.constant != 0) {
        foundation::fatalError("an equality of something else than the edges of two views");
    }
    layout->tie(first, constraint.anchor);
}

} // namespace

std::unique_ptr<Window>
QtToolkit::makeWindow(Rect contentRect, WindowStyle style, WindowBacking /*backing*/) {
    // Qt always draws into a buffer, and takes it when the window is shown first.
    return std::make_unique<QtWindow>(contentRect, style);
}

std::shared_ptr<View> QtToolkit::makeView(Rect frame) {
    return std::make_shared<QtView>(frame);
}

std::shared_ptr<VerticalStack> QtToolkit::makeVerticalStack() {
    return std::make_shared<QtVerticalStack>();
}

std::shared_ptr<Label> QtToolkit::makeLabel(std::string text) {
    return std::make_shared<QtLabel>(QtTextWidget::Wrapping::oneLine, text);
}

std::shared_ptr<Label> QtToolkit::makeWrappingLabel(std::string text) {
    return std::make_shared<QtLabel>(QtTextWidget::Wrapping::wrapped, text);
}

std::shared_ptr<Button> QtToolkit::makeButton(std::string title, Action action) {
    return std::make_shared<QtButton>(title, std::move(action));
}

void QtToolkit::activateConstraints(const std::vector<LayoutConstraint>& constraints) {
    std::for_each(constraints.begin(), constraints.end(), activate);
}

} // namespace platform
