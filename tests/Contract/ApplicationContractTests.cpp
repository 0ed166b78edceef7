#include "Platform/Memory/MemoryApplication.h"
#include "tests/Contract/ApplicationContract.h"

#include <gmock/gmock.h>

namespace contract {

namespace {

class MemoryApplicationBackend final : public ApplicationBackend {
  public:
    platform::Application& application() override { return application_; }

    void ask(Request request) override { application_.ask(request); }

    void settle() override {}

    void leaveTheFront() override { earlierActivations_ = application_.activationCount(); }

    [[nodiscard]] bool comesToTheFront() override {
        return application_.activationCount() > earlierActivations_;
    }

    bool endsAfter(const std::function<void()>& action) override {
        action();
        return application_.isTerminated();
    }

  private:
    platform::MemoryApplication application_;
    int earlierActivations_ = 0;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         ApplicationContract,
                         (backend<ApplicationBackend, MemoryApplicationBackend>("Memory")),
                         nameOfBackend<ApplicationBackend>);

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(ApplicationContract, HandlesRequestsFromTheDesktop) {
    application_.setRequests(noting());
    backend_->ask(convert);
    backend_->ask(openPreferences);
    backend_->ask(convert);
    EXPECT_THAT(notes_, ElementsAre("convert", "preferences", "convert"));
}

TEST_P(ApplicationContract, QueuesRequestsUntilThereAreHandlersAndHandlesEachOnce) {
    backend_->ask(openPreferences);
    backend_->ask(convert);
    application_.setRequests(noting());
    backend_->settle();
    EXPECT_THAT(notes_, ElementsAre("preferences", "convert"));
    application_.setRequests(noting());
    backend_->settle();
    EXPECT_EQ(notes_.size(), 2U);
}

TEST_P(ApplicationContract, NewHandlersReplaceOldOnes) {
    application_.setRequests(noting());
    int count = 0;
    application_.setRequests(
        {.convert = [&] { ++count; }, .openPreferences = {}, .retryShortcut = {}});
    backend_->ask(convert);
    backend_->ask(openPreferences);
    EXPECT_EQ(count, 1);
    EXPECT_THAT(notes_, IsEmpty());
}

TEST_P(ApplicationContract, ComesToTheFrontWhenItActivatesItself) {
    backend_->leaveTheFront();
    application_.activateIgnoringOtherApps();
    EXPECT_TRUE(backend_->comesToTheFront());
}

TEST_P(ApplicationContract, EndsAfterTheCallReturns) {
    bool hasReturned = false;
    EXPECT_TRUE(backend_->endsAfter([&] {
        application_.terminate();
        backend_->settle();
        hasReturned = true;
    }));
    EXPECT_TRUE(hasReturned);
}

} // namespace contract
