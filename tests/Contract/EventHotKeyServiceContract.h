#pragma once

#include "Foundation/Interface.h"
#include "HotKey/EventHotKeyService.h"
#include "HotKey/ModifierFlags.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace contract {

/// A Carbon key code and modifier mask.
using Combination = std::pair<std::uint32_t, std::uint32_t>;

inline constexpr Combination commandG{5, hotkey::cmdKey};
inline constexpr Combination shiftCommandK{0x28, hotkey::cmdKey | hotkey::shiftKey};
/// Pressed by the suite itself, to know when earlier key presses have taken effect.
inline constexpr Combination optionF1{0x7A, hotkey::optionKey};
inline constexpr hotkey::EventHotKeyID optionF1ID{.signature = 0, .id = 99};

/// A system with the service under test, a user who presses keys, and another program.
class EventHotKeyServiceBackend : public foundation::Interface {
  public:
    virtual hotkey::EventHotKeyService& service() = 0;
    virtual void press(Combination combination) = 0;
    virtual void release(Combination combination) = 0;
    virtual bool takeElsewhere(Combination combination) = 0;
    virtual void giveBackElsewhere(Combination combination) = 0;
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
};

class EventHotKeyServiceContract
    : public testing::TestWithParam<BackendMaker<EventHotKeyServiceBackend>> {
  protected:
    EventHotKeyServiceContract() {
        install([this](hotkey::EventRef event) {
            events_.push_back(name(event));
            return hotkey::noErr;
        });
        EXPECT_EQ(registerHotKey(optionF1, optionF1ID, optionF1Reference_), hotkey::noErr);
    }

    hotkey::EventHotKeyService& service() { return backend_->service(); }

    hotkey::OSStatus registerHotKey(Combination combination,
                                    hotkey::EventHotKeyID id,
                                    hotkey::EventHotKeyRef& reference) {
        return service().registerEventHotKey(combination.first,
                                             combination.second,
                                             id,
                                             service().getEventDispatcherTarget(),
                                             0,
                                             reference);
    }

    /// Registers a combination that the system must grant.
    hotkey::EventHotKeyRef take(Combination combination, std::uint32_t id) {
        hotkey::EventHotKeyRef reference;
        EXPECT_EQ(registerHotKey(combination, {.signature = 7, .id = id}, reference),
                  hotkey::noErr);
        EXPECT_FALSE(reference.isNull());
        return reference;
    }

    void install(const std::function<hotkey::OSStatus(hotkey::EventRef)>& handler,
                 const std::vector<hotkey::EventTypeSpec>& types = {
                     {hotkey::kEventClassKeyboard, hotkey::kEventHotKeyPressed},
                     {hotkey::kEventClassKeyboard, hotkey::kEventHotKeyReleased}}) {
        hotkey::EventHandlerRef reference;
        EXPECT_EQ(service().installEventHandler(
                      service().getEventDispatcherTarget(),
                      [handler](auto /*next*/, hotkey::EventRef event, void* /*userData*/) {
                          return handler(event);
                      },
                      types,
                      nullptr,
                      reference),
                  hotkey::noErr);
        EXPECT_FALSE(reference.isNull());
    }

    hotkey::EventHotKeyID hotKeyID(hotkey::EventRef event) {
        hotkey::EventHotKeyID id;
        EXPECT_EQ(
            service().getEventParameter(
                event, hotkey::kEventParamDirectObject, hotkey::typeEventHotKeyID, sizeof id, &id),
            hotkey::noErr);
        return id;
    }

    /// "down" or "up", and the id.
    std::string name(hotkey::EventRef event) {
        const std::uint32_t kind = service().getEventKind(event);
        return (kind == hotkey::kEventHotKeyPressed    ? "down "
                : kind == hotkey::kEventHotKeyReleased ? "up "
                                                       : "? ") +
               std::to_string(hotKeyID(event).id);
    }

    void tap(Combination combination) {
        backend_->press(combination);
        backend_->release(combination);
    }

    /// The events of all keys pressed so far. Keys take effect in order, so this presses one more
    /// hot key and waits for its events.
    std::vector<std::string> events() {
        tap(optionF1);
        EXPECT_TRUE(
            backend_->waitUntil([this] { return !events_.empty() && events_.back() == "up 99"; }));
        std::erase(events_, "down 99");
        std::erase(events_, "up 99");
        return std::exchange(events_, {});
    }

    std::unique_ptr<EventHotKeyServiceBackend> backend_ = GetParam().make();

  private:
    std::vector<std::string> events_;
    hotkey::EventHotKeyRef optionF1Reference_;
};

} // namespace contract
