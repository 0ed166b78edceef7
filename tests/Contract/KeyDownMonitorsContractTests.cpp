#include "Platform/Memory/MemoryKeyDownMonitors.h"
#include "tests/Contract/KeyDownMonitorsContract.h"

#include <optional>

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

using foundation::ObserverToken;
using platform::KeyEvent;

TEST_P(KeyDownMonitorsContract, KeysReachTheWindowWithoutAMonitor) {
    EXPECT_TRUE(backend_->reachesTheWindow());
}

TEST_P(KeyDownMonitorsContract, AMonitorSwallowsAKeyOrPassesItOn) {
    const ObserverToken token = add('a', false);
    EXPECT_FALSE(backend_->reachesTheWindow());
    monitors_.removeMonitor(token);
    static_cast<void>(add('b', true));
    EXPECT_TRUE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "ab");
}

TEST_P(KeyDownMonitorsContract, MonitorsAreCalledInOrderUntilOneSwallows) {
    static_cast<void>(add('a', true));
    static_cast<void>(add('b', false));
    static_cast<void>(add('c', true));
    EXPECT_FALSE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "ab");
}

TEST_P(KeyDownMonitorsContract, ARemovedMonitorSeesNothing) {
    const ObserverToken token = add('a', false);
    monitors_.removeMonitor(token);
    monitors_.removeMonitor(token);
    EXPECT_TRUE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "");
}

TEST_P(KeyDownMonitorsContract, AMonitorMayRemoveItselfAndSwallowTheKey) {
    ObserverToken token{};
    token = monitors_.addLocalMonitor([&](const KeyEvent& /*event*/) -> std::optional<KeyEvent> {
        monitors_.removeMonitor(token);
        notes_ += 'a';
        return std::nullopt;
    });
    EXPECT_FALSE(backend_->reachesTheWindow());
    EXPECT_TRUE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "a");
}

} // namespace contract
