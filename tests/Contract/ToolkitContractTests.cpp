#include "Platform/Memory/MemoryViews.h"
#include "tests/Contract/ToolkitContract.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

namespace contract {

namespace {

class MemoryToolkitBackend final : public ToolkitBackend {
  public:
    platform::Toolkit& toolkit() override { return toolkit_; }

    void press(platform::Button& button) override {
        dynamic_cast<platform::MemoryButton&>(button).press();
    }

    void settle() override {}

  private:
    platform::MemoryToolkit toolkit_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         ToolkitContract,
                         (backend<ToolkitBackend, MemoryToolkitBackend>("Memory")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(Memory,
                         ToolkitContractDeathTests,
                         (backend<ToolkitBackend, MemoryToolkitBackend>("Memory")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(Memory,
                         WindowContract,
                         (backend<ToolkitBackend, MemoryToolkitBackend>("Memory")),
                         nameOfBackend<ToolkitBackend>);

using platform::LayoutConstraint;
using platform::Rect;
using testing::AnyOf;
using testing::ElementsAre;
using Anchor = platform::LayoutConstraint::Anchor;

TEST_P(WindowContract, IsHiddenAtFirstAndAfterItIsClosed) {
    window_->setContentViewController(controller_);
    EXPECT_FALSE(window_->isVisible());
    window_->makeKeyAndOrderFront();
    EXPECT_TRUE(window_->isVisible());
    window_->close();
    EXPECT_FALSE(window_->isVisible());
}

TEST_P(WindowContract, LoadsTheViewOfItsController) {
    window_->setContentViewController(controller_);
    EXPECT_THAT(controller_.notes, ElementsAre("load", "did load"));
}

TEST_P(WindowContract, GivesTheViewItsContentSize) {
    window_->setContentViewController(controller_);
    EXPECT_EQ(controller_.view()->frame(), (Rect{{0, 0}, {400, 350}}));
    window_->makeKeyAndOrderFront();
    backend_->settle();
    EXPECT_EQ(controller_.view()->frame(), (Rect{{0, 0}, {400, 350}}));
}

TEST_P(WindowContract, NotifiesItsControllerOfAppearingLayoutAndDisappearing) {
    window_->setContentViewController(controller_);
    controller_.notes.clear();
    window_->makeKeyAndOrderFront();
    backend_->settle();
    EXPECT_THAT(controller_.notes, ElementsAre("will appear", "did layout"));
    window_->close();
    EXPECT_THAT(controller_.notes, ElementsAre("will appear", "did layout", "did disappear"));
}

TEST_P(WindowContract, DoesNotAppearAgainWhileItIsVisible) {
    window_->setContentViewController(controller_);
    window_->makeKeyAndOrderFront();
    controller_.notes.clear();
    window_->makeKeyAndOrderFront();
    EXPECT_EQ(std::count(controller_.notes.begin(), controller_.notes.end(), "will appear"), 0);
}

TEST_P(WindowContract, DoesNotDisappearWhileItIsHidden) {
    window_->setContentViewController(controller_);
    controller_.notes.clear();
    window_->close();
    EXPECT_THAT(controller_.notes, ElementsAre());
}

TEST_P(WindowContract, CanBeShownAgain) {
    window_->setContentViewController(controller_);
    window_->makeKeyAndOrderFront();
    window_->close();
    controller_.notes.clear();
    window_->makeKeyAndOrderFront();
    backend_->settle();
    EXPECT_TRUE(window_->isVisible());
    // An unchanged layout need not be repeated.
    EXPECT_THAT(controller_.notes,
                AnyOf(ElementsAre("will appear"), ElementsAre("will appear", "did layout")));
}

TEST_P(WindowContract, CanBeShownWithoutContent) {
    window_->setTitle("Empty");
    window_->center();
    window_->makeKeyAndOrderFront();
    EXPECT_TRUE(window_->isVisible());
    window_->close();
    EXPECT_FALSE(window_->isVisible());
}

TEST_P(WindowContract, LeavesTheViewToItsController) {
    window_->setContentViewController(controller_);
    window_->makeKeyAndOrderFront();
    window_.reset();
    EXPECT_EQ(controller_.view()->frame().size, (platform::Size{400, 350}));
}

TEST_P(ToolkitContract, ALabelHasTheTextItWasGiven) {
    const auto label = toolkit_.makeLabel("one & <b>two</b>");
    EXPECT_EQ(label->text(), "one & <b>two</b>");
    label->setText("\u2318\u21E7K");
    EXPECT_EQ(label->text(), "\u2318\u21E7K");
    EXPECT_EQ(toolkit_.makeWrappingLabel("")->text(), "");
}

TEST_P(ToolkitContract, AButtonHasTheTitleItWasGiven) {
    const auto button = toolkit_.makeButton("Cut & Paste", {.name = "paste", .perform = [] {}});
    EXPECT_EQ(button->title(), "Cut & Paste");
    button->setTitle("Stop && Go");
    EXPECT_EQ(button->title(), "Stop && Go");
}

TEST_P(ToolkitContract, AButtonCallsItsActionEachTimeItIsPressed) {
    int count = 0;
    const auto button =
        toolkit_.makeButton("Press", {.name = "press", .perform = [&] { ++count; }});
    EXPECT_EQ(count, 0);
    backend_->press(*button);
    backend_->press(*button);
    EXPECT_EQ(count, 2);
}

TEST_P(ToolkitContract, AnActionMayChangeTheButton) {
    std::shared_ptr<platform::Button> button;
    button =
        toolkit_.makeButton("Start", {.name = "toggle", .perform = [&] {
                                          button->setTitle("Stop");
                                          button->animateAlpha(0.8, std::chrono::milliseconds(200));
                                      }});
    backend_->press(*button);
    EXPECT_EQ(button->title(), "Stop");
}

TEST_P(ToolkitContract, AViewHasTheFrameItWasGiven) {
    EXPECT_EQ(toolkit_.makeView({{10, 20}, {30, 40}})->frame(), (Rect{{10, 20}, {30, 40}}));
}

TEST_P(ToolkitContract, AViewKeepsItsSubviewsAlive) {
    auto container = toolkit_.makeView({});
    auto stack = toolkit_.makeVerticalStack();
    const std::weak_ptr<platform::View> label = [&] {
        auto made = toolkit_.makeLabel("Label");
        stack->addArrangedSubview(made);
        return made;
    }();
    container->addSubview(std::move(stack));
    EXPECT_FALSE(label.expired());
    container.reset();
    EXPECT_TRUE(label.expired());
}

TEST_P(ToolkitContract, AViewOutlivesItsContainer) {
    const auto label = toolkit_.makeLabel("Label");
    toolkit_.makeView({})->addSubview(label);
    EXPECT_EQ(label->text(), "Label");
}

TEST_P(ToolkitContract, AcceptsConstraintsToTheContainerAndAMinimumWidth) {
    const auto container = toolkit_.makeView({});
    const auto button = toolkit_.makeButton("Press", {.name = "press", .perform = [] {}});
    container->addSubview(button);
    toolkit_.activateConstraints({LayoutConstraint::equal(button, Anchor::top, container),
                                  LayoutConstraint::equal(button, Anchor::bottom, container),
                                  LayoutConstraint::equal(button, Anchor::centerX, container),
                                  LayoutConstraint::atLeast(button, Anchor::width, 140)});
    container->layoutSubtreeIfNeeded();
}

TEST_P(ToolkitContractDeathTests, RejectsConstraintsBetweenViewsThatAreNotNested) {
    const auto one = toolkit_.makeLabel("one");
    const auto other = toolkit_.makeView({});
    EXPECT_DEATH(toolkit_.activateConstraints({LayoutConstraint::equal(one, Anchor::top, other)}),
                 "is not inside");
}

} // namespace contract
