#include "Foundation/Logger.h"
#include "Foundation/NotificationCenter.h"
#include "Pastewise/AnalyticsManager.h"
#include "Pastewise/AppState.h"
#include "Pastewise/MenuBarHostingController.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryTime.h"
#include "Platform/Memory/MemoryUserDefaults.h"
#include "Platform/Memory/MemoryViews.h"
#include "tests/Support/CallOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <locale>
#include <memory>
#include <utility>

namespace {

using pastewise::MenuBarHostingController;
using platform::MemoryHostingView;
using platform::MemoryViewNode;
using platform::Rect;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

class MenuBarHostingControllerTests : public testing::Test {
  protected:
    MenuBarHostingControllerTests() { sink_.clear(); }

    std::unique_ptr<MenuBarHostingController>
    makeController(std::shared_ptr<MemoryHostingView> hostingView) {
        return std::make_unique<MenuBarHostingController>(
            std::move(hostingView), appState_, toolkit_, loggers_);
    }

    platform::MemoryMainQueue mainQueue_;
    platform::MemoryLogSink sink_;
    platform::MemoryUserDefaults userDefaults_;
    platform::MemoryClock clock_{mainQueue_};
    platform::MemoryCalendar calendar_;
    platform::MemoryToolkit toolkit_{sink_.journal()};
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    foundation::NotificationCenter notificationCenter_{mainQueue_};
    pastewise::AnalyticsManager analytics_{
        userDefaults_, clock_, calendar_, mainQueue_, notificationCenter_, loggers_};
    pastewise::AppState appState_{analytics_, userDefaults_, clock_, notificationCenter_, loggers_};
    std::shared_ptr<MemoryHostingView> hostingView_ = std::make_shared<MemoryHostingView>();
};

TEST_F(MenuBarHostingControllerTests, DoesNothingBeforeItsViewIsNeeded) {
    const auto controller = makeController(hostingView_);
    EXPECT_EQ(&controller->appState(), &appState_);
    EXPECT_EQ(hostingView_->layoutCount(), 0);
    EXPECT_THAT(sink_.entries(), IsEmpty());
}

TEST_F(MenuBarHostingControllerTests, LaysOutTheHostingViewWhenLoaded) {
    hostingView_->setFrameOfNextLayout({{0, 0}, {400, 12.5}});
    const auto controller = makeController(hostingView_);
    EXPECT_EQ(controller->view(), hostingView_);
    EXPECT_FALSE(hostingView_->translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(hostingView_->layoutCount(), 1);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: loadView triggered; configuring hosting view",
                            "debug: Hosting view configured with frame: {{0, 0}, {400, 12.5}}"));
    EXPECT_EQ(sink_.entries().back().redacted, "Hosting view configured with frame: <private>");
}

TEST_F(MenuBarHostingControllerTests, ShowsAnEmptyViewWithoutAHostingView) {
    const auto controller = makeController(nullptr);
    EXPECT_EQ(controller->view()->frame(), Rect{});
    EXPECT_THAT(MemoryViewNode::of(*controller->view()).subviews(), IsEmpty());
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: loadView triggered; configuring hosting view",
                            "error: Hosting view is nil during loadView"));
    EXPECT_TRUE(testing_support::madeInOrder(
        *sink_.journal(), {"log error: Hosting view is nil during loadView", "make view"}));
}

TEST_F(MenuBarHostingControllerTests, LogsTheFrameOfALayoutBeforeLayingOutTheHostingView) {
    const auto controller = makeController(hostingView_);
    static_cast<void>(controller->view());
    sink_.clear();
    hostingView_->setFrame({{-1.25, 2}, {300, 1.0 / 3}});
    hostingView_->setFrameOfNextLayout({{0, 0}, {1, 1}});
    controller->viewDidLayout();
    EXPECT_EQ(hostingView_->layoutCount(), 2);
    EXPECT_EQ(hostingView_->frame(), (Rect{{0, 0}, {1, 1}}));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: MenuBarHostingController viewDidLayout with frame: "
                            "{{-1.25, 2}, {300, 0.33333333333333331}}"));
    EXPECT_EQ(sink_.entries().back().redacted,
              "MenuBarHostingController viewDidLayout with frame: <private>");
}

TEST_F(MenuBarHostingControllerTests, LogsAFrameTheSameInEveryLocale) {
    struct Commas final : std::numpunct<char> {
        [[nodiscard]] char do_decimal_point() const override { return ','; }
    };

    hostingView_->setFrameOfNextLayout({{0, 0}, {400, 12.5}});
    const auto controller = makeController(hostingView_);
    const std::locale before = std::locale::global({std::locale::classic(), new Commas});
    static_cast<void>(controller->view());
    std::locale::global(before);
    EXPECT_EQ(sink_.messages().back(),
              "debug: Hosting view configured with frame: {{0, 0}, {400, 12.5}}");
}

TEST_F(MenuBarHostingControllerTests, LaysOutTheHostingViewWheneverItAppears) {
    const auto controller = makeController(hostingView_);
    static_cast<void>(controller->view());
    sink_.clear();
    controller->viewWillAppear();
    controller->viewWillAppear();
    EXPECT_EQ(hostingView_->layoutCount(), 3);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: MenuBarHostingController viewWillAppear",
                            "debug: MenuBarHostingController viewWillAppear"));
}

TEST_F(MenuBarHostingControllerTests, DoesNotLayOutAnEmptyView) {
    const auto controller = makeController(nullptr);
    const auto view = controller->view();
    sink_.clear();
    controller->viewDidLayout();
    controller->viewWillAppear();
    EXPECT_EQ(MemoryViewNode::of(*view).layoutCount(), 0);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: MenuBarHostingController viewDidLayout with frame: "
                            "{{0, 0}, {0, 0}}",
                            "debug: MenuBarHostingController viewWillAppear"));
}

TEST_F(MenuBarHostingControllerTests, FillsAndFollowsAWindow) {
    const auto controller = makeController(hostingView_);
    const auto window = toolkit_.makeWindow({{0, 0}, {200, 100}}, {}, {});
    window->setContentViewController(*controller);
    sink_.clear();
    window->makeKeyAndOrderFront();
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: MenuBarHostingController viewWillAppear",
                            "debug: MenuBarHostingController viewDidLayout with frame: "
                            "{{0, 0}, {200, 100}}"));
}

TEST_F(MenuBarHostingControllerTests, LogsUnderItsClassName) {
    static_cast<void>(makeController(nullptr)->view());
    using Entry = platform::MemoryLogSink::Entry;
    EXPECT_EQ(sink_.entries().size(), 2U);
    EXPECT_THAT(sink_.entries(), Each(Field(&Entry::subsystem, "com.app.pastewise")));
    EXPECT_THAT(sink_.entries(), Each(Field(&Entry::category, "MenuBarHostingController")));
}

TEST(MenuBarHostingControllerDeathTest, CannotBeMadeFromAnArchive) {
    EXPECT_DEATH(MenuBarHostingController::initWithCoder(),
                 "init\\(coder:\\) has not been implemented");
}

TEST(MenuBarHostingControllerDeathTest, CannotBeMadeFromANib) {
    EXPECT_DEATH(MenuBarHostingController::initWithNibName(),
                 "unimplemented initializer init\\(nibName:bundle:\\)");
}

} // namespace
