#include "Platform/Linux/Qt/QtViews.h"
#include "tests/Platform/Linux/Qt/FormWindow.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>

#include <QLayout>
#include <QWidget>
#include <memory>
#include <string>

namespace {

using platform::LayoutConstraint;
using platform::Rect;
using platform::widgetOf;
using testing_support::QtTestLoop;
using Anchor = platform::LayoutConstraint::Anchor;

class QtLayoutTests : public testing::Test {
  protected:
    /// The distance of a view's top from the top of its container.
    [[nodiscard]] static double top(platform::View& view) {
        return static_cast<double>(widgetOf(view).parentWidget()->height()) -
               view.frame().origin.y - view.frame().size.height;
    }

    [[nodiscard]] static double bottom(platform::View& view) {
        return top(view) + view.frame().size.height;
    }

    static void expectCentered(platform::View& view) {
        const Rect frame = view.frame();
        const double containerWidth = widgetOf(view).parentWidget()->width();
        EXPECT_NEAR(frame.origin.x + (frame.size.width / 2), containerWidth / 2, 0.5);
    }

    /// A view in the container.
    [[nodiscard]] std::shared_ptr<platform::View> inContainer(Rect frame) {
        auto view = toolkit_.makeView(frame);
        container_->addSubview(view);
        return view;
    }

    testing_support::QtDesktop desktop_;
    platform::QtToolkit toolkit_;
    std::shared_ptr<platform::View> container_ = toolkit_.makeView({{0, 0}, {300, 200}});
};

TEST_F(QtLayoutTests, AStackFillsTheViewItIsPinnedTo) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.stack->frame(), (Rect{{0, 0}, {400, 350}}));
}

TEST_F(QtLayoutTests, ArrangedViewsAreStackedWithSpacingAndInsets) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(top(*form.title), 20);
    EXPECT_EQ(top(*form.display), bottom(*form.title) + 12);
    EXPECT_EQ(top(*form.recordContainer), bottom(*form.display) + 12);
    EXPECT_EQ(top(*form.status), bottom(*form.recordContainer) + 12);
    EXPECT_EQ(top(*form.reset), bottom(*form.status) + 12);
    EXPECT_EQ(top(*form.caption), 0);
    EXPECT_EQ(top(*form.shortcut), bottom(*form.caption) + 8);
}

TEST_F(QtLayoutTests, ArrangedViewsAreCentered) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    for (const auto& view : {form.display, form.recordContainer}) {
        expectCentered(*view);
    }
    expectCentered(*form.title);
    expectCentered(*form.caption);
    expectCentered(*form.shortcut);
    expectCentered(*form.record);
    expectCentered(*form.status);
    expectCentered(*form.reset);
}

TEST_F(QtLayoutTests, ArrangedViewsCanBeAlignedToTheLeadingEdge) {
    FormWindow form;
    form.stack->setAlignment(platform::VerticalStack::Alignment::leading);
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.title->frame().origin.x, 20);
    EXPECT_EQ(form.reset->frame().origin.x, 20);
}

TEST_F(QtLayoutTests, AContainerIsAsLargeAsTheViewPinnedToIt) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.displayStack->frame(), (Rect{{0, 0}, form.display->frame().size}));
    EXPECT_EQ(form.record->frame(), (Rect{{0, 0}, form.recordContainer->frame().size}));
}

TEST_F(QtLayoutTests, AButtonIsWiderThanItsMinimumOnlyForALongTitle) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.record->frame().size.width, 140);
    EXPECT_LT(form.reset->frame().size.width, 140);
    form.record->setTitle("A title that is much longer than that");
    EXPECT_TRUE(QtTestLoop::turnUntil([&] {
        return form.record->frame().size.width == widgetOf(*form.record).sizeHint().width();
    }));
    EXPECT_GT(form.record->frame().size.width, 140);
    expectCentered(*form.record);
}

TEST_F(QtLayoutTests, ALabelThatWrapsMovesTheViewsBelowIt) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    const double oneLine = form.status->frame().size.height;
    const double before = top(*form.reset);
    form.status->setText(std::string(30, 'x') + " " + std::string(30, 'x') + " " +
                         std::string(30, 'x'));
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return top(*form.reset) > before; }));
    EXPECT_EQ(form.status->frame().size.height, 2 * oneLine);
    EXPECT_EQ(top(*form.reset), before + oneLine);
    EXPECT_LE(form.status->frame().size.width, 360);
}

TEST_F(QtLayoutTests, AHiddenViewIsLaidOutOnDemand) {
    FormWindow form;
    form.stack->layoutSubtreeIfNeeded();
    EXPECT_EQ(top(*form.title), 20);
    EXPECT_EQ(form.record->frame().size.width, 140);
}

TEST_F(QtLayoutTests, AViewKeepsItsSubviewsAlive) {
    const std::weak_ptr<platform::View> view = inContainer({{0, 0}, {1, 1}});
    EXPECT_FALSE(view.expired());
    container_.reset();
    EXPECT_TRUE(view.expired());
}

TEST_F(QtLayoutTests, AViewOutlivesItsContainer) {
    const auto label = toolkit_.makeLabel("Label");
    container_->addSubview(label);
    container_.reset();
    EXPECT_EQ(label->text(), "Label");
    EXPECT_EQ(widgetOf(*label).parentWidget(), nullptr);
}

using QtLayoutDeathTests = QtLayoutTests;

TEST_F(QtLayoutDeathTests, RejectsConstraintsToAViewThatIsNotTheContainer) {
    const auto one = inContainer({{0, 0}, {1, 1}});
    const auto other = inContainer({{0, 0}, {1, 1}});
    EXPECT_DEATH(toolkit_.activateConstraints({LayoutConstraint::equal(one, Anchor::top, other)}),
                 "is not inside its second one");
}

TEST_F(QtLayoutDeathTests, RejectsConstraintsThatNoLayoutStandsFor) {
    const auto view = inContainer({{0, 0}, {1, 1}});
    const char* const message = "constraints that no layout of Qt's stands for";
    EXPECT_DEATH(
        toolkit_.activateConstraints({LayoutConstraint::equal(view, Anchor::top, container_),
                                      LayoutConstraint::equal(view, Anchor::leading, container_)}),
        message);
    EXPECT_DEATH(toolkit_.activateConstraints({LayoutConstraint::atLeast(view, Anchor::top, 5)}),
                 message);
}

} // namespace
