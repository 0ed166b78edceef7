#include "Foundation/ObserverList.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace {

using foundation::ObserverList;
using foundation::ObserverToken;

class ObserverListTests : public testing::Test {
  protected:
    ObserverList<std::string>::Handler note(char mark) {
        return [this, mark](const std::string& text) { notes_ += mark + text; };
    }

    ObserverList<std::string> list_;
    std::string notes_;
};

TEST_F(ObserverListTests, CallsEveryObserverInTheOrderOfAddition) {
    list_.add(note('b'));
    list_.add(note('a'));
    list_.notify("1");
    EXPECT_EQ(notes_, "b1a1");
}

TEST_F(ObserverListTests, MayBeEmpty) {
    list_.notify("1");
    list_.remove(ObserverToken{7});
    EXPECT_EQ(notes_, "");
}

TEST_F(ObserverListTests, DoesNotReuseTokens) {
    const ObserverToken first = list_.add(note('a'));
    list_.remove(first);
    const ObserverToken second = list_.add(note('b'));
    EXPECT_NE(first, second);
    list_.remove(first);
    list_.notify("1");
    EXPECT_EQ(notes_, "b1");
}

TEST_F(ObserverListTests, AnObserverMayRemoveItself) {
    std::optional<ObserverToken> token;
    token = list_.add([&, mark = std::string("a mark too long for the handler itself")](
                          const std::string& /*text*/) {
        list_.remove(*token);
        notes_ += mark;
    });
    list_.add(note('b'));
    list_.notify("1");
    list_.notify("2");
    EXPECT_EQ(notes_, "a mark too long for the handler itselfb1b2");
}

TEST_F(ObserverListTests, DoesNotCallAnObserverThatAnEarlierOneRemoved) {
    std::optional<ObserverToken> last;
    list_.add([&](const std::string& /*text*/) { list_.remove(*last); });
    list_.add(note('b'));
    last = list_.add(note('c'));
    list_.notify("1");
    EXPECT_EQ(notes_, "b1");
}

TEST_F(ObserverListTests, FirstCallsAnObserverAddedDuringNotifyTheNextTime) {
    bool isAdded = false;
    list_.add([&](const std::string& /*text*/) {
        if (!isAdded) {
            isAdded = true;
            list_.add(note('n'));
        }
    });
    list_.notify("1");
    EXPECT_EQ(notes_, "");
    list_.notify("2");
    EXPECT_EQ(notes_, "n2");
}

TEST_F(ObserverListTests, AnObserverMayDestroyTheList) {
    auto list = std::make_unique<ObserverList<>>();
    list->add([&, mark = std::string("a mark too long for the handler itself")] {
        list.reset();
        notes_ += mark;
    });
    list->notify();
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(notes_, "a mark too long for the handler itself");
}

TEST_F(ObserverListTests, AnObserverMayNotify) {
    int depth = 0;
    list_.add([&](const std::string& /*text*/) {
        if (++depth == 1) {
            list_.notify("inner");
        }
    });
    list_.add(note('b'));
    list_.notify("outer");
    EXPECT_EQ(notes_, "binnerbouter");
}

} // namespace
