#include "Platform/Memory/MemoryApplication.h"
#include "tests/Contract/ApplicationContract.h"

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

} // namespace contract
