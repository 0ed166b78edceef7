#include "Foundation/ObservableObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <optional>
#include <string>

namespace {

using foundation::ObservableObject;
using foundation::ObserverToken;
using foundation::Published;

struct Account final : public ObservableObject {
    Published<int> count{*this, 3};
    Published<std::optional<std::string>> owner{*this};
};

class ObservableObjectTests : public testing::Test {
  protected:
    ObserverToken observe() {
        return account_.addObjectWillChangeObserver([this] {
            notes_ +=
                std::to_string(account_.count.get()) + account_.owner.get().value_or("-") + " ";
        });
    }

    Account account_;
    std::string notes_;
};

TEST_F(ObservableObjectTests, StartsWithTheInitialValues) {
    EXPECT_EQ(account_.count.get(), 3);
    EXPECT_EQ(account_.owner.get(), std::nullopt);
}

TEST_F(ObservableObjectTests, AnnouncesAChangeBeforeItHappens) {
    observe();
    account_.count.set(4);
    EXPECT_EQ(notes_, "3- ");
    EXPECT_EQ(account_.count.get(), 4);
    account_.owner.set("x");
    EXPECT_EQ(notes_, "3- 4- ");
    EXPECT_EQ(account_.owner.get(), "x");
}

TEST_F(ObservableObjectTests, AnnouncesAnAssignmentOfTheSameValue) {
    observe();
    account_.count.set(3);
    account_.count.set(3);
    EXPECT_EQ(notes_, "3- 3- ");
}

TEST_F(ObservableObjectTests, DoesNotNotifyARemovedObserver) {
    const ObserverToken token = observe();
    account_.count.set(4);
    account_.removeObjectWillChangeObserver(token);
    account_.count.set(5);
    EXPECT_EQ(notes_, "3- ");
    EXPECT_EQ(account_.count.get(), 5);
}

TEST_F(ObservableObjectTests, DoesNotAnnounceChangesOfAnotherObject) {
    observe();
    Account other;
    other.count.set(9);
    EXPECT_EQ(notes_, "");
    EXPECT_EQ(account_.count.get(), 3);
}

TEST_F(ObservableObjectTests, AcceptsItsOwnValue) {
    account_.owner.set(std::string(100, 'x'));
    account_.owner.set(account_.owner.get());
    EXPECT_EQ(account_.owner.get(), std::string(100, 'x'));
}

TEST(ObservableObjectDeathTest, AnObserverMayNotDestroyTheObject) {
    auto account = std::make_unique<Account>();
    account->addObjectWillChangeObserver([&account] { account.reset(); });
    EXPECT_DEATH(account->count.set(4),
                 "Fatal error: an observer destroyed the object whose change it was notified of");
}

TEST_F(ObservableObjectTests, MayBeDestroyedAfterAnObserverHasThrown) {
    auto account = std::make_unique<Account>();
    account->addObjectWillChangeObserver([] { throw std::bad_alloc(); });
    EXPECT_THROW(account->count.set(4), std::bad_alloc);
    EXPECT_EQ(account->count.get(), 3);
    account.reset();
}

} // namespace
