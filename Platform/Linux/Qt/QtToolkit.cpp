#include "Platform/Linux/Qt/QtToolkit.h"

#include "Foundation/FatalError.h"
#include "Platform/Linux/Qt/QtViews.h"
#include "Platform/Linux/Qt/QtWindow.h"

#include <QGridLayout>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace platform {

namespace {

using Anchor = LayoutConstraint::Anchor;
using Relation = LayoutConstraint::Relation;

/// Puts a view into the cell of its container so that these anchors of both are equal.
void place(View& view, View& container, const std::set<Anchor>& anchors) {
    QWidget& widget = widgetOf(view);
    auto* const cell = dynamic_cast<QGridLayout*>(widgetOf(container).layout());
    if (cell == nullptr || widget.parentWidget() != &widgetOf(container)) {
        foundation::fatalError("a constraint's first view is not inside its second one");
    }
    if (anchors == std::set{Anchor::top, Anchor::leading, Anchor::trailing, Anchor::bottom}) {
        cell->addWidget(&widget, 0, 0);
    } else if (anchors == std::set{Anchor::top, Anchor::bottom, Anchor::centerX}) {
        cell->addWidget(&widget, 0, 0, Qt::AlignHCenter);
    } else {
        foundation::fatalError("constraints that no layout of Qt's stands for");
    }
}

} // namespace

std::unique_ptr<Window>
QtToolkit::makeWindow(Rect contentRect, WindowStyle style, WindowBacking /*backing*/) {
    // Qt always draws into a buffer, which it allocates when the window is first shown.
    return std::make_unique<QtWindow>(contentRect, style);
}

std::shared_ptr<View> QtToolkit::makeView(Rect frame) {
    return std::make_shared<QtView>(frame);
}

std::shared_ptr<VerticalStack> QtToolkit::makeVerticalStack() {
    return std::make_shared<QtVerticalStack>();
}

std::shared_ptr<Label> QtToolkit::makeLabel(std::string text) {
    return std::make_shared<QtLabel>(std::move(text), QtLabel::Wrapping::none);
}

std::shared_ptr<Label> QtToolkit::makeWrappingLabel(std::string text) {
    return std::make_shared<QtLabel>(std::move(text), QtLabel::Wrapping::words);
}

std::shared_ptr<Button> QtToolkit::makeButton(std::string title, Action action) {
    return std::make_shared<QtButton>(std::move(title), std::move(action));
}

void QtToolkit::activateConstraints(const std::vector<LayoutConstraint>& constraints) {
    std::map<std::pair<View*, View*>, std::set<Anchor>> equalAnchors;
    for (const LayoutConstraint& constraint : constraints) {
        const auto& [first, anchor, relation, second, constant] = constraint;
        if (second && relation == Relation::equal && constant == 0) {
            equalAnchors[{first.get(), second.get()}].insert(anchor);
        } else if (!second && relation == Relation::greaterThanOrEqual && anchor == Anchor::width) {
            widgetOf(*first).setMinimumWidth(static_cast<int>(std::ceil(constant)));
        } else {
            foundation::fatalError("constraints that no layout of Qt's stands for");
        }
    }
    for (const auto& [views, anchors] : equalAnchors) {
        place(*views.first, *views.second, anchors);
    }
}

} // namespace platform
