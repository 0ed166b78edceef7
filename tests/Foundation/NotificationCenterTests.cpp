#include "Foundation/NotificationCenter.h"
#include "Platform/Memory/MemoryMainQueue.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using foundation::Notification;
using foundation::NotificationCenter;
using foundation::ObserverToken;
using foundation::Value;

class NotificationCenterTests : public testing::Test {
  protected:
    ObserverToken observe(const std::string& name, char mark) {
        return center_->addObserver(name,
                                    [this, mark](const auto& /*notification*/) { notes_ += mark; });
    }

    void post(const std::string& name, std::optional<Value> object = {}) {
        center_->post({.name = name, .object = std::move(object)});
    }

    void postFromAnotherThread(const std::string& name, const std::optional<Value>& object = {}) {
        queue_.setIsMainThread(false);
        std::thread([&] { post(name, object); }).join();
        queue_.setIsMainThread(true);
    }

    platform::MemoryMainQueue queue_;
    std::optional<NotificationCenter> center_{std::in_place, queue_};
    std::string notes_;
};

TEST_F(NotificationCenterTests, CallsEveryObserverBeforeAPostOnTheMainThreadReturns) {
    observe("changed", 'a');
    post("changed");
    EXPECT_EQ(notes_, "a");
    EXPECT_EQ(queue_.pendingCount(), 0U);
}

TEST_F(NotificationCenterTests, CallsObserversInTheOrderOfTheirRegistration) {
    observe("changed", 'c');
    observe("changed", 'a');
    observe("changed", 'b');
    post("changed");
    EXPECT_EQ(notes_, "cab");
    post("changed");
    EXPECT_EQ(notes_, "cabcab");
}

TEST_F(NotificationCenterTests, CallsOnlyTheObserversOfTheName) {
    observe("changed", 'a');
    observe("change", 'b');
    observe("", 'c');
    post("changed");
    post("unknown");
    EXPECT_EQ(notes_, "a");
}

TEST_F(NotificationCenterTests, CallsObserversOnTheMainThreadAfterAPostFromAnotherThread) {
    observe("changed", 'a');
    observe("changed", 'b');
    postFromAnotherThread("changed");
    EXPECT_EQ(notes_, "");
    queue_.drain();
    EXPECT_EQ(notes_, "ab");
}

TEST_F(NotificationCenterTests, PassesOneNotificationToAllObservers) {
    std::vector<const Notification*> seen;
    const auto note = [&seen](const Notification& notification) { seen.push_back(&notification); };
    center_->addObserver("changed", note);
    center_->addObserver("changed", note);
    const Notification notification{.name = "changed", .object = 1.5};
    center_->post(notification);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0], seen[1]);
}

TEST_F(NotificationCenterTests, PassesTheNameAndTheObject) {
    std::optional<Notification> seen;
    center_->addObserver("changed", [&](const Notification& notification) { seen = notification; });
    post("changed", 12.5);
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->name, "changed");
    EXPECT_EQ(seen->object, Value(12.5));
    post("changed");
    EXPECT_EQ(seen->object, std::nullopt);
    postFromAnotherThread("changed", Value("\u2318 G"));
    queue_.drain();
    EXPECT_EQ(seen->object, Value("\u2318 G"));
}

TEST_F(NotificationCenterTests, DoesNotCallARemovedObserver) {
    const ObserverToken first = observe("changed", 'a');
    observe("changed", 'b');
    center_->removeObserver(first);
    post("changed");
    EXPECT_EQ(notes_, "b");
    center_->removeObserver(first);
    post("changed");
    EXPECT_EQ(notes_, "bb");
}

TEST_F(NotificationCenterTests, DoesNotCallAnObserverRemovedDuringDelivery) {
    std::optional<ObserverToken> last;
    center_->addObserver("changed", [&](const auto& /*notification*/) {
        notes_ += 'a';
        center_->removeObserver(*last);
    });
    observe("changed", 'b');
    last = observe("changed", 'c');
    post("changed");
    EXPECT_EQ(notes_, "ab");
}

TEST_F(NotificationCenterTests, DoesNotCallAnObserverRemovedBeforeDelivery) {
    const ObserverToken token = observe("changed", 'a');
    postFromAnotherThread("changed");
    center_->removeObserver(token);
    queue_.drain();
    EXPECT_EQ(notes_, "");
}

TEST_F(NotificationCenterTests, AnObserverMayPost) {
    center_->addObserver("changed", [this](const auto& /*notification*/) { post("nested"); });
    observe("changed", 'b');
    observe("nested", 'a');
    post("changed");
    EXPECT_EQ(notes_, "ab") << "the inner post is delivered before it returns";
}

TEST_F(NotificationCenterTests, DropsPendingPostsWhenDestroyed) {
    observe("changed", 'a');
    postFromAnotherThread("changed");
    center_.reset();
    queue_.drain();
    EXPECT_EQ(notes_, "");
}

} // namespace
