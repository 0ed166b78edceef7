#include "tests/Pastewise/ViewOutline.h"

#include "Platform/Memory/MemoryViews.h"

#include <cstddef>
#include <sstream>

namespace testing_support {

namespace {

using platform::LayoutConstraint;
using platform::MemoryButton;
using platform::MemoryLabel;
using platform::MemoryVerticalStack;
using platform::MemoryViewNode;

void describe(std::ostream& out, const MemoryVerticalStack& stack) {
    out << "stack";
    if (stack.spacing()) {
        out << ", spacing " << *stack.spacing();
    }
    const platform::EdgeInsets insets = stack.edgeInsets();
    if (insets != platform::EdgeInsets{}) {
        out << ", insets " << insets.top << " " << insets.leading << " " << insets.bottom << " "
            << insets.trailing;
    }
    out << (stack.alignment() == MemoryVerticalStack::Alignment::centerX ? ", centred"
                                                                         : ", leading");
}

void describe(std::ostream& out, const MemoryLabel& label) {
    out << (label.wraps() ? "wrapping label \"" : "label \"") << label.text() << "\"";
    if (label.font()) {
        out << (label.font()->weight == platform::FontWeight::bold ? ", bold " : ", font ")
            << label.font()->size;
    }
    if (label.textColor() == platform::TextColor::secondaryLabel) {
        out << ", secondary";
    }
    if (label.alignment() == platform::TextAlignment::center) {
        out << ", centred";
    }
    if (label.maximumNumberOfLines()) {
        out << ", lines " << *label.maximumNumberOfLines();
    }
    out << (label.isEditable() ? ", editable" : "") << (label.isSelectable() ? ", selectable" : "");
}

void describe(std::ostream& out, const MemoryButton& button) {
    out << "button \"" << button.title() << "\" does " << button.actionName();
    if (button.bezelStyle() == MemoryButton::BezelStyle::rounded) {
        out << ", rounded";
    }
    out << (button.wantsLayer() ? ", layer" : "");
    if (button.horizontalContentHuggingPriority()) {
        out << ", hugging " << *button.horizontalContentHuggingPriority();
    }
}

void describe(std::ostream& out, const platform::View& view, std::size_t depth) {
    out << std::string(2 * depth, ' ');
    if (const auto* const stack = dynamic_cast<const MemoryVerticalStack*>(&view)) {
        describe(out, *stack);
    } else if (const auto* const label = dynamic_cast<const MemoryLabel*>(&view)) {
        describe(out, *label);
    } else if (const auto* const button = dynamic_cast<const MemoryButton*>(&view)) {
        describe(out, *button);
    } else {
        out << "view";
    }
    const platform::Rect frame = view.frame();
    if (frame != platform::Rect{}) {
        out << ", frame " << frame.origin.x << " " << frame.origin.y << " " << frame.size.width
            << " " << frame.size.height;
    }
    const MemoryViewNode& node = MemoryViewNode::of(view);
    out << (node.translatesAutoresizingMaskIntoConstraints() ? "\n" : ", by constraints\n");
    for (const auto& subview : node.subviews()) {
        describe(out, *subview, depth + 1);
    }
}

std::string nameOf(LayoutConstraint::Anchor anchor) {
    switch (anchor) {
    case LayoutConstraint::Anchor::top:
        return "top";
    case LayoutConstraint::Anchor::leading:
        return "leading";
    case LayoutConstraint::Anchor::trailing:
        return "trailing";
    case LayoutConstraint::Anchor::bottom:
        return "bottom";
    case LayoutConstraint::Anchor::centerX:
        return "centerX";
    case LayoutConstraint::Anchor::width:
        return "width";
    }
    return "?";
}

} // namespace

std::string outline(const platform::View& view) {
    std::ostringstream out;
    describe(out, view, 0);
    return out.str();
}

std::vector<std::string> lines(const std::vector<platform::MemoryLayoutConstraint>& constraints,
                               const ViewNames& names) {
    const auto nameOfView = [&names](const std::weak_ptr<platform::View>& view) {
        const auto found = names.find(view.lock().get());
        return found == names.end() ? std::string("?") : found->second;
    };
    std::vector<std::string> texts;
    for (const auto& constraint : constraints) {
        const std::string anchor = nameOf(constraint.anchor);
        std::ostringstream out;
        out << nameOfView(constraint.first) << "." << anchor
            << (constraint.relation == LayoutConstraint::Relation::equal ? " = " : " >= ");
        if (constraint.second.lock()) {
            out << nameOfView(constraint.second) << "." << anchor;
            if (constraint.constant != 0) {
                out << " + " << constraint.constant;
            }
        } else {
            out << constraint.constant;
        }
        texts.push_back(out.str());
    }
    return texts;
}

} // namespace testing_support
