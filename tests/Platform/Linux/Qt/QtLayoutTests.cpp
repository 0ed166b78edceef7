#include "Platform/Linux/Qt/QtWidgetView.h"
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
using testing_support::QtTestLoop;
using Anchor = platform::LayoutConstraint::Anchor;

class QtLayoutTests : public testing::Test {
  protected:
    [[nodiscard]] static QWidget& widgetOf(platform::View& view) {
        return platform::QtWidgetView::of(view).widget();
    }

    /// How far below the top of its container a view begins.
    [[nodiscard]] static double top(platform::View& view) {
        return static_cast<double>(widgetOf(view).parentWidget()->height()) -
               view.frame().origin.y - view.frame().size.height;
    }

    [[nodiscard]] static double bottom(platform::View& view) {
        return top(view) + view.frame().size.height;
    }

    static void expectCentred(platform::View& view) {
        const Rect frame = view.frame();
        const double containerWidth = widgetOf(view).parentWidget()->width();
        EXPECT_NEAR(frame.origin.x + (frame.size.width / 2), containerWidth / 2, 0.5);
    }

    /// A view of that size at a place, in a container of 300 by 200.
    [[nodiscard]] std::shared_ptr<platform::View> inContainer(Rect frame) {
        auto view = toolkit_.makeView(frame);
        container_->addSubview(view);
        return view;
    }

    testing_support::QtDesktop desktop_;
    platform::QtToolkit toolkit_;
    std::shared_ptr<platform::View> container_ = toolkit_.makeView({{0, 0}, {300, 200}});
};

TEST_F(QtLayoutTests, AStackFillsTheViewThatItIsPinnedTo) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.stack->frame(), (Rect{{0, 0}, {400, 350}}));
}

TEST_F(QtLayoutTests, ArrangedViewsStandBelowEachOtherWithTheSpacingAndInsets) {
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

TEST_F(QtLayoutTests, ArrangedViewsStandInTheMiddle) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    for (const auto& view : {form.display, form.recordContainer}) {
        expectCentred(*view);
    }
    expectCentred(*form.title);
    expectCentred(*form.caption);
    expectCentred(*form.shortcut);
    expectCentred(*form.record);
    expectCentred(*form.status);
    expectCentred(*form.reset);
}

TEST_F(QtLayoutTests, ArrangedViewsStandAtTheLeadingEdgeWhenAskedTo) {
    FormWindow form;
    form.stack->setAlignment(platform::VerticalStack::Alignment::leading);
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.title->frame().origin.x, 20);
    EXPECT_EQ(form.reset->frame().origin.x, 20);
}

TEST_F(QtLayoutTests, AContainerIsAsLargeAsWhatIsPinnedToIt) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.displayStack->frame(), (Rect{{0, 0}, form.display->frame().size}));
    EXPECT_EQ(form.record->frame(), (Rect{{0, 0}, form.recordContainer->frame().size}));
}

TEST_F(QtLayoutTests, AButtonHasItsMinimumWidthAndMoreForALongerTitle) {
    FormWindow form;
    form.window->makeKeyAndOrderFront();
    EXPECT_EQ(form.record->frame().size.width, 140);
    EXPECT_LT(form.reset->frame().size.width, 140);
    form.record->setTitle("A title that is much longer than that");
    EXPECT_TRUE(QtTestLoop::turnUntil([&] {
        return form.record->frame().size.width == widgetOf(*form.record).sizeHint().width();
    }));
    EXPECT_GT(form.record->frame().size.width, 140);
    expectCentred(*form.record);
}

TEST_F(QtLayoutTests, ALabelThatNeedsASecondLineMovesWhatStandsBelow) {
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

TEST_F(QtLayoutTests, ALayoutIsUpToDateOnDemandBeforeAnythingIsShown) {
    FormWindow form;
    widgetOf(*form.stack).parentWidget();
    form.stack->layoutSubtreeIfNeeded();
    EXPECT_EQ(top(*form.title), 20);
    EXPECT_EQ(form.record->frame().size.width, 140);
}

TEST_F(QtLayoutTests, AViewWithoutConstraintsKeepsItsFrame) {
    const auto view = inContainer({{30, 40}, {50, 60}});
    container_->layoutSubtreeIfNeeded();
    EXPECT_EQ(view->frame(), (Rect{{30, 40}, {50, 60}}));
}

TEST_F(QtLayoutTests, ALabelWithoutConstraintsHasItsNaturalSize) {
    const auto label = toolkit_.makeLabel("Label");
    container_->addSubview(label);
    container_->layoutSubtreeIfNeeded();
    const QSize natural = widgetOf(*label).sizeHint();
    EXPECT_EQ(label->frame().size.width, natural.width());
    EXPECT_EQ(label->frame().size.height, natural.height());
}

TEST_F(QtLayoutTests, AViewTiedToOneEdgeKeepsItsNaturalSizeThere) {
    const auto label = toolkit_.makeLabel("Label");
    container_->addSubview(label);
    toolkit_.activateConstraints({LayoutConstraint::equal(label, Anchor::trailing, container_),
                                  LayoutConstraint::equal(label, Anchor::bottom, container_)});
    container_->layoutSubtreeIfNeeded();
    const double width = widgetOf(*label).sizeHint().width();
    EXPECT_EQ(label->frame().origin, (platform::Point{300 - width, 0}));
    EXPECT_EQ(label->frame().size.width, width);
}

TEST_F(QtLayoutTests, AViewAsWideAsItsContainerFillsTheWidth) {
    const auto label = toolkit_.makeLabel("Label");
    container_->addSubview(label);
    toolkit_.activateConstraints({LayoutConstraint::equal(label, Anchor::width, container_),
                                  LayoutConstraint::equal(label, Anchor::top, container_)});
    container_->layoutSubtreeIfNeeded();
    EXPECT_EQ(label->frame().origin.x, 0);
    EXPECT_EQ(label->frame().size.width, 300);
    EXPECT_EQ(top(*label), 0);
}

TEST_F(QtLayoutTests, LeadingIsOnTheRightWhereTextRunsFromRightToLeft) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const auto label = toolkit_.makeLabel("Label");
    container_->addSubview(label);
    toolkit_.activateConstraints({LayoutConstraint::equal(label, Anchor::leading, container_),
                                  LayoutConstraint::equal(label, Anchor::top, container_)});
    container_->layoutSubtreeIfNeeded();
    EXPECT_EQ(label->frame().origin.x + label->frame().size.width, 300);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(QtLayoutTests, AViewKeepsWhatWasPutIntoIt) {
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

TEST_F(QtLayoutDeathTests, RefusesAConstraintToAViewThatIsNoContainer) {
    const auto one = inContainer({{0, 0}, {1, 1}});
    const auto other = inContainer({{0, 0}, {1, 1}});
    EXPECT_DEATH(toolkit_.activateConstraints({LayoutConstraint::equal(one, Anchor::top, other)}),
                 "does not stand in the other");
}

TEST_F(QtLayoutDeathTests, RefusesAMinimumForAnythingButAWidth) {
    const auto view = inContainer({{0, 0}, {1, 1}});
    EXPECT_DEATH(toolkit_.activateConstraints({LayoutConstraint::atLeast(view, Anchor::top, 5)}),
                 "a minimum for something else than a width");
}

} // namespace
