#include "Platform/Memory/MemoryKeyDownMonitors.h"
#include "tests/Contract/KeyDownMonitorsContract.h"

namespace contract {

namespace {

class MemoryKeyDownMonitorsBackend final : public KeyDownMonitorsBackend {
  public:
    platform::KeyDownMonitors& monitors() override { return monitors_; }

    bool reachesTheWindow() override {
        return monitors_.deliver({.keyCode = carbonG, .modifierFlags = {}}).has_value();
    }

  private:
    platform::MemoryKeyDownMonitors monitors_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         KeyDownMonitorsContract,
                         (backend<KeyDownMonitorsBackend, MemoryKeyDownMonitorsBackend>("Memory")),
                         nameOfBackend<KeyDownMonitorsBackend>);

} // namespace contract
