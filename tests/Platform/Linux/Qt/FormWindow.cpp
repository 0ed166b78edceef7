#include "tests/Platform/Linux/Qt/FormWindow.h"

using platform::FontWeight;
using platform::LayoutConstraint;
using Anchor = platform::LayoutConstraint::Anchor;

namespace {

std::vector<LayoutConstraint> pinned(const std::shared_ptr<platform::View>& view,
                                     const std::shared_ptr<platform::View>& container) {
    return {LayoutConstraint::equal(view, Anchor::top, container),
            LayoutConstraint::equal(view, Anchor::leading, container),
            LayoutConstraint::equal(view, Anchor::trailing, container),
            LayoutConstraint::equal(view, Anchor::bottom, container)};
}

} // namespace

FormWindow::FormWindow() {
    title->setFont({.size = 16, .weight = FontWeight::bold});
    caption->setFont({.size = 12});
    caption->setTextColor(platform::TextColor::secondaryLabel);
    caption->setAlignment(platform::TextAlignment::center);
    shortcut->setFont({.size = 14, .weight = FontWeight::bold});
    shortcut->setAlignment(platform::TextAlignment::center);
    status->setFont({.size = 11});
    status->setTextColor(platform::TextColor::secondaryLabel);
    status->setAlignment(platform::TextAlignment::center);
    status->setMaximumNumberOfLines(2);

    window->setTitle("Form");
    window->center();
    window->setContentViewController(controller_);
}

void FormWindow::Controller::loadView() {
    FormWindow& form = form_;
    const auto root = form.toolkit.makeView({{0, 0}, {400, 200}});
    form.stack->setSpacing(12);
    form.stack->setEdgeInsets({.top = 20, .leading = 20, .bottom = 20, .trailing = 20});
    root->addSubview(form.stack);
    form.toolkit.activateConstraints(pinned(form.stack, root));

    form.displayStack->setSpacing(8);
    form.displayStack->addArrangedSubview(form.caption);
    form.displayStack->addArrangedSubview(form.shortcut);
    form.display->addSubview(form.displayStack);
    form.toolkit.activateConstraints(pinned(form.displayStack, form.display));

    form.recordContainer->addSubview(form.record);
    form.toolkit.activateConstraints(
        {LayoutConstraint::equal(form.record, Anchor::top, form.recordContainer),
         LayoutConstraint::equal(form.record, Anchor::bottom, form.recordContainer),
         LayoutConstraint::equal(form.record, Anchor::centerX, form.recordContainer),
         LayoutConstraint::atLeast(form.record, Anchor::width, 140)});

    form.stack->addArrangedSubview(form.title);
    form.stack->addArrangedSubview(form.display);
    form.stack->addArrangedSubview(form.recordContainer);
    form.stack->addArrangedSubview(form.status);
    form.stack->addArrangedSubview(form.reset);
    setView(root);
}
