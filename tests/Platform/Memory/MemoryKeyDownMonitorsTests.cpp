#include "Platform/Memory/MemoryKeyDownMonitors.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace {

using foundation::ObserverToken;
using platform::KeyEvent;
using platform::MemoryKeyDownMonitors;

KeyEvent pressOf(std::uint32_t keyCode) {
    return {.keyCode = keyCode, .modifierFlags = {}};
}

std::optional<KeyEvent> letThrough(const KeyEvent& event) {
    return event;
}

std::optional<KeyEvent> swallow(const KeyEvent& /*event*/) {
    return std::nullopt;
}

TEST(MemoryKeyDownMonitorsTests, TheWindowGetsEveryKeyWithoutMonitors) {
    MemoryKeyDownMonitors monitors;
    const auto delivered = monitors.deliver(pressOf(5));
    ASSERT_TRUE(delivered.has_value());
    EXPECT_EQ(delivered->keyCode, 5U);
}

TEST(MemoryKeyDownMonitorsTests, TheWindowGetsWhatTheMonitorsReturn) {
    MemoryKeyDownMonitors monitors;
    static_cast<void>(monitors.addLocalMonitor(
        [](const KeyEvent& event) { return std::optional(pressOf(event.keyCode + 1)); }));
    static_cast<void>(monitors.addLocalMonitor(
        [](const KeyEvent& event) { return std::optional(pressOf(event.keyCode * 10)); }));
    const auto delivered = monitors.deliver(pressOf(5));
    ASSERT_TRUE(delivered.has_value());
    EXPECT_EQ(delivered->keyCode, 60U);
}

TEST(MemoryKeyDownMonitorsTests, ASwallowedKeyReachesNeitherMonitorsNorWindow) {
    MemoryKeyDownMonitors monitors;
    int seen = 0;
    static_cast<void>(monitors.addLocalMonitor(swallow));
    static_cast<void>(monitors.addLocalMonitor([&seen](const KeyEvent& event) {
        ++seen;
        return letThrough(event);
    }));
    EXPECT_FALSE(monitors.deliver(pressOf(5)).has_value());
    EXPECT_EQ(seen, 0);
}

TEST(MemoryKeyDownMonitorsTests, AHandlerMayRemoveItselfAndKeepsItsCaptures) {
    MemoryKeyDownMonitors monitors;
    auto token = std::make_shared<ObserverToken>();
    *token = monitors.addLocalMonitor([&monitors, token](const KeyEvent& event) {
        monitors.removeMonitor(*token);
        return std::optional(pressOf(event.keyCode + (token ? 1U : 0U)));
    });
    const auto delivered = monitors.deliver(pressOf(5));
    ASSERT_TRUE(delivered.has_value());
    EXPECT_EQ(delivered->keyCode, 6U);
    EXPECT_EQ(monitors.monitorCount(), 0U);
}

TEST(MemoryKeyDownMonitorsTests, DoesNotCallAMonitorThatAnEarlierOneRemoved) {
    MemoryKeyDownMonitors monitors;
    ObserverToken second{};
    static_cast<void>(monitors.addLocalMonitor([&](const KeyEvent& event) {
        monitors.removeMonitor(second);
        return letThrough(event);
    }));
    second = monitors.addLocalMonitor(swallow);
    EXPECT_TRUE(monitors.deliver(pressOf(5)).has_value());
    EXPECT_EQ(monitors.monitorCount(), 1U);
}

} // namespace
