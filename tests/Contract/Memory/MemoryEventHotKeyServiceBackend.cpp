#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "tests/Contract/EventHotKeyServiceContract.h"

#include <functional>

namespace contract {

namespace {

class MemoryEventHotKeyServiceBackend final : public EventHotKeyServiceBackend {
  public:
    hotkey::EventHotKeyService& service() override { return service_; }

    void press(Combination combination) override { service_.press(combination); }

    void release(Combination combination) override { service_.release(combination); }

    bool takeElsewhere(Combination combination) override {
        return service_.takeElsewhere(combination);
    }

    void giveBackElsewhere(Combination combination) override {
        service_.giveBackElsewhere(combination);
    }

    bool waitUntil(const std::function<bool()>& condition) override { return condition(); }

  private:
    platform::MemoryEventHotKeyService service_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Memory,
    EventHotKeyServiceContract,
    (backend<EventHotKeyServiceBackend, MemoryEventHotKeyServiceBackend>("Memory")),
    nameOfBackend<EventHotKeyServiceBackend>);

} // namespace contract
