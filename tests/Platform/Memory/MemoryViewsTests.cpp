#include "Platform/Memory/MemoryViews.h"
#include "Platform/Views.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using platform::LayoutConstraint;
using platform::MemoryToolkit;
using platform::Rect;
using testing::ElementsAre;
using testing::IsEmpty;

/// Records its notifications.
class Listener final : public platform::ViewController {
  public:
    explicit Listener(MemoryToolkit& toolkit) : toolkit_(toolkit) {}

    void loadView() override { setView(toolkit_.makeView({{0, 0}, {40, 20}})); }

    void viewDidLoad() override { heard_.emplace_back("did load"); }

    void viewWillAppear() override { heard_.emplace_back("will appear"); }

    void viewDidLayout() override { heard_.emplace_back("did layout"); }

    void viewDidDisappear() override { heard_.emplace_back("did disappear"); }

    [[nodiscard]] const std::vector<std::string>& heard() const { return heard_; }

  private:
    MemoryToolkit& toolkit_;
    std::vector<std::string> heard_;
};

TEST(MemoryToolkitTests, ListsTheExistingWindows) {
    MemoryToolkit toolkit;
    auto first = toolkit.makeWindow({}, {}, {});
    const auto second = toolkit.makeWindow({}, {}, {});
    EXPECT_THAT(toolkit.windows(), ElementsAre(first.get(), second.get()));
    first.reset();
    EXPECT_THAT(toolkit.windows(), ElementsAre(second.get()));
}

TEST(MemoryToolkitTests, NotifiesTheControllerOfItsWindow) {
    MemoryToolkit toolkit;
    Listener listener(toolkit);
    const auto window = toolkit.makeWindow({{0, 0}, {400, 350}}, {}, {});
    window->setContentViewController(listener);
    EXPECT_EQ(listener.view()->frame(), (Rect{{0, 0}, {400, 350}}));
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(listener.heard(), ElementsAre("did load"));

    window->makeKeyAndOrderFront();
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(toolkit.windows().front()->keyAndFrontCount(), 2);
    EXPECT_THAT(listener.heard(), ElementsAre("did load", "will appear", "did layout"));

    window->close();
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(listener.heard(),
                ElementsAre("did load", "will appear", "did layout", "did disappear"));
}

TEST(MemoryToolkitTests, AViewOwnsItsSubviews) {
    MemoryToolkit toolkit;
    auto view = toolkit.makeView({});
    auto label = toolkit.makeLabel("text");
    const std::weak_ptr<platform::Label> weakLabel = label;
    view->addSubview(std::move(label));
    toolkit.activateConstraints(
        {LayoutConstraint::equal(weakLabel.lock(), LayoutConstraint::Anchor::top, view)});
    EXPECT_FALSE(weakLabel.expired());
    view.reset();
    EXPECT_TRUE(weakLabel.expired());
}

TEST(MemoryToolkitTests, RecordsTheConstraintsOfEachCallAsAGroup) {
    MemoryToolkit toolkit;
    const auto outer = toolkit.makeView({});
    const auto stack = toolkit.makeVerticalStack();
    const auto label = toolkit.makeLabel("text");
    outer->addSubview(stack);
    stack->addArrangedSubview(label);
    toolkit.activateConstraints(
        {LayoutConstraint::equal(label, LayoutConstraint::Anchor::top, outer),
         LayoutConstraint::atLeast(label, LayoutConstraint::Anchor::width, 7)});
    toolkit.activateConstraints(
        {LayoutConstraint::equal(stack, LayoutConstraint::Anchor::bottom, outer)});
    ASSERT_EQ(toolkit.constraintGroups().size(), 2U);
    ASSERT_EQ(toolkit.constraintGroups()[0].size(), 2U);
    const auto& width = toolkit.constraintGroups()[0][1];
    EXPECT_EQ(width.first.lock(), label);
    EXPECT_EQ(width.anchor, LayoutConstraint::Anchor::width);
    EXPECT_EQ(width.relation, LayoutConstraint::Relation::greaterThanOrEqual);
    EXPECT_EQ(width.second.lock(), nullptr);
    EXPECT_EQ(width.constant, 7);
    EXPECT_EQ(toolkit.constraintGroups()[1].size(), 1U);
}

TEST(MemoryToolkitDeathTest, RejectsAConstraintBetweenUnrelatedViews) {
    MemoryToolkit toolkit;
    const auto view = toolkit.makeView({});
    const auto other = toolkit.makeView({});
    EXPECT_DEATH(toolkit.activateConstraints(
                     {LayoutConstraint::equal(view, LayoutConstraint::Anchor::top, other)}),
                 "a constraint's first view is not inside its second one");
}

TEST(MemoryToolkitTests, AButtonsActionMayDestroyTheButton) {
    MemoryToolkit toolkit;
    std::string log = "pressed";
    std::shared_ptr<platform::Button> button;
    auto close = [&button, &log, text = std::string(100, 'x')] {
        button.reset();
        log = text;
    };
    button = toolkit.makeButton("Close", {.name = "close", .perform = close});
    dynamic_cast<platform::MemoryButton&>(*button).press();
    EXPECT_EQ(button, nullptr);
    EXPECT_EQ(log, std::string(100, 'x'));
}

TEST(MemoryToolkitTests, AHostingViewChangesItsFrameAtTheNextLayout) {
    platform::MemoryHostingView view;
    view.setFrameOfNextLayout({{0, 0}, {12.5, 3}});
    EXPECT_EQ(view.frame(), Rect{});
    view.layoutSubtreeIfNeeded();
    EXPECT_EQ(view.frame(), (Rect{{0, 0}, {12.5, 3}}));
    EXPECT_EQ(view.layoutCount(), 1);
    EXPECT_THAT(view.subviews(), IsEmpty());
}

} // namespace
