#include "HotKey/EventHotKeyService.h"
#include "HotKey/ModifierFlags.h"
#include "Platform/Linux/CarbonKeyCodes.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/Qt/QtMainQueue.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/OtherX11Program.h"
#include "tests/Support/PrivateXServer.h"
#include "tests/Support/QtTestLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using hotkey::EventHotKeyID;
using hotkey::EventHotKeyRef;
using hotkey::eventNotHandledErr;
using hotkey::EventRef;
using hotkey::EventTypeSpec;
using hotkey::noErr;
using hotkey::OSStatus;
using testing::ElementsAre;

/// A Carbon key code and modifier mask.
using Combination = std::pair<std::uint32_t, std::uint32_t>;

constexpr Combination commandG{5, hotkey::cmdKey};
constexpr Combination shiftCommandK{0x28, hotkey::cmdKey | hotkey::shiftKey};
/// Used by the suite itself, to know when everything pressed before it has had its effect.
constexpr Combination optionF1{0x7A, hotkey::optionKey};
constexpr EventHotKeyID optionF1ID{.signature = 0, .id = 99};

/// A whole system with the service in it: its user, who presses keys, and its other programs.
class HotKeySystem {
  public:
    HotKeySystem() = default;
    virtual ~HotKeySystem() = default;
    HotKeySystem(const HotKeySystem&) = delete;
    HotKeySystem& operator=(const HotKeySystem&) = delete;
    HotKeySystem(HotKeySystem&&) = delete;
    HotKeySystem& operator=(HotKeySystem&&) = delete;

    virtual hotkey::EventHotKeyService& service() = 0;
    virtual void press(Combination combination) = 0;
    virtual void release(Combination combination) = 0;
    virtual bool takeElsewhere(Combination combination) = 0;
    virtual void giveBackElsewhere(Combination combination) = 0;
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
};

class MemorySystem final : public HotKeySystem {
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

class X11System final : public HotKeySystem {
  public:
    hotkey::EventHotKeyService& service() override { return *service_; }

    void press(Combination combination) override {
        for (const auto& modifier : modifiersOf(combination)) {
            keyboard_.press(modifier.evdevKeyCode);
        }
        keyboard_.press(key(combination));
    }

    void release(Combination combination) override {
        keyboard_.release(key(combination));
        for (const auto& modifier : modifiersOf(combination)) {
            keyboard_.release(modifier.evdevKeyCode);
        }
    }

    bool takeElsewhere(Combination combination) override {
        return otherProgram_.take(x11KeyCode(combination), mask(combination));
    }

    void giveBackElsewhere(Combination combination) override {
        otherProgram_.giveBack(x11KeyCode(combination), mask(combination));
    }

    bool waitUntil(const std::function<bool()>& condition) override {
        return testing_support::QtTestLoop::turnUntil(condition);
    }

  private:
    struct Modifier {
        std::uint32_t carbonFlag;
        int evdevKeyCode;
        unsigned x11Mask;
    };

    static std::vector<Modifier> modifiersOf(Combination combination) {
        std::vector<Modifier> modifiers{{hotkey::cmdKey, KEY_LEFTMETA, XCB_MOD_MASK_4},
                                        {hotkey::shiftKey, KEY_LEFTSHIFT, XCB_MOD_MASK_SHIFT},
                                        {hotkey::optionKey, KEY_LEFTALT, XCB_MOD_MASK_1}};
        std::erase_if(modifiers, [&](const Modifier& modifier) {
            return (combination.second & modifier.carbonFlag) == 0;
        });
        return modifiers;
    }

    static int key(Combination combination) {
        return platform::evdevKeyCode(combination.first).value();
    }

    static std::uint8_t x11KeyCode(Combination combination) {
        return static_cast<std::uint8_t>(key(combination) + 8);
    }

    static std::uint16_t mask(Combination combination) {
        unsigned mask = 0;
        for (const Modifier& modifier : modifiersOf(combination)) {
            mask |= modifier.x11Mask;
        }
        return static_cast<std::uint16_t>(mask);
    }

    testing_support::PrivateXServer server_;
    testing_support::QtTestLoop loop_;
    platform::QtEventLoop eventLoop_;
    platform::QtMainQueue mainQueue_;
    testing_support::FakeKeyboard keyboard_{server_.display()};
    testing_support::OtherX11Program otherProgram_{server_.display()};
    std::unique_ptr<platform::X11EventHotKeyService> service_ =
        platform::X11EventHotKeyService::open(eventLoop_, mainQueue_, server_.display());
};

struct SystemMaker {
    std::string name;
    std::function<std::unique_ptr<HotKeySystem>()> make;
};

void PrintTo(const SystemMaker& maker, std::ostream* stream) {
    *stream << maker.name;
}

class EventHotKeyServiceContract : public testing::TestWithParam<SystemMaker> {
  protected:
    EventHotKeyServiceContract() {
        install([this](EventRef event) {
            events_.push_back(name(event));
            return noErr;
        });
        EXPECT_EQ(registerHotKey(optionF1, optionF1ID, optionF1Reference_), noErr);
    }

    hotkey::EventHotKeyService& service() { return system_->service(); }

    OSStatus registerHotKey(Combination combination, EventHotKeyID id, EventHotKeyRef& reference) {
        return service().registerEventHotKey(combination.first,
                                             combination.second,
                                             id,
                                             service().getEventDispatcherTarget(),
                                             0,
                                             reference);
    }

    /// Registers a combination that the system is expected to grant.
    EventHotKeyRef take(Combination combination, std::uint32_t id) {
        EventHotKeyRef reference;
        EXPECT_EQ(registerHotKey(combination, {.signature = 7, .id = id}, reference), noErr);
        EXPECT_FALSE(reference.isNull());
        return reference;
    }

    void install(const std::function<OSStatus(EventRef)>& handler,
                 const std::vector<EventTypeSpec>& types = {
                     {hotkey::kEventClassKeyboard, hotkey::kEventHotKeyPressed},
                     {hotkey::kEventClassKeyboard, hotkey::kEventHotKeyReleased}}) {
        hotkey::EventHandlerRef reference;
        EXPECT_EQ(service().installEventHandler(
                      service().getEventDispatcherTarget(),
                      [handler](auto /*next*/, EventRef event, void* /*userData*/) {
                          return handler(event);
                      },
                      types,
                      nullptr,
                      reference),
                  noErr);
        EXPECT_FALSE(reference.isNull());
    }

    EventHotKeyID hotKeyID(EventRef event) {
        EventHotKeyID id;
        EXPECT_EQ(
            service().getEventParameter(
                event, hotkey::kEventParamDirectObject, hotkey::typeEventHotKeyID, sizeof id, &id),
            noErr);
        return id;
    }

    /// "down" or "up", and the id.
    std::string name(EventRef event) {
        const std::uint32_t kind = service().getEventKind(event);
        return (kind == hotkey::kEventHotKeyPressed    ? "down "
                : kind == hotkey::kEventHotKeyReleased ? "up "
                                                       : "? ") +
               std::to_string(hotKeyID(event).id);
    }

    void tap(Combination combination) {
        system_->press(combination);
        system_->release(combination);
    }

    /// The events of everything pressed so far: keys have their effect in the order in which they
    /// are pressed, so one more hot key is pressed, and its events are waited for.
    std::vector<std::string> events() {
        tap(optionF1);
        EXPECT_TRUE(
            system_->waitUntil([this] { return !events_.empty() && events_.back() == "up 99"; }));
        std::erase(events_, "down 99");
        std::erase(events_, "up 99");
        return std::exchange(events_, {});
    }

    std::unique_ptr<HotKeySystem> system_ = GetParam().make();

  private:
    std::vector<std::string> events_;
    EventHotKeyRef optionF1Reference_;
};

TEST_P(EventHotKeyServiceContract, SendsAPressAndAReleaseThatCarryTheId) {
    take(commandG, 1);
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_P(EventHotKeyServiceContract, KeepsTheSignatureBesideTheId) {
    EventHotKeyRef reference;
    ASSERT_EQ(registerHotKey(commandG, {.signature = 0xFEDCBA98, .id = 0xFFFFFFFF}, reference),
              noErr);
    std::vector<EventHotKeyID> seen;
    install([&](EventRef event) {
        seen.push_back(hotKeyID(event));
        return eventNotHandledErr;
    });
    tap(commandG);
    events();
    ASSERT_GE(seen.size(), 1U);
    EXPECT_EQ(seen[0], (EventHotKeyID{.signature = 0xFEDCBA98, .id = 0xFFFFFFFF}));
}

TEST_P(EventHotKeyServiceContract, TellsCombinationsApart) {
    take(commandG, 1);
    take(shiftCommandK, 2);
    tap(shiftCommandK);
    tap(commandG);
    tap({0x28, hotkey::cmdKey});
    tap({5, hotkey::cmdKey | hotkey::shiftKey});
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2", "down 1", "up 1"));
}

TEST_P(EventHotKeyServiceContract, RefusesACombinationThatAnotherProgramHas) {
    ASSERT_TRUE(system_->takeElsewhere(commandG));
    EventHotKeyRef reference;
    EXPECT_NE(registerHotKey(commandG, {.signature = 7, .id = 1}, reference), noErr);
    EXPECT_TRUE(reference.isNull());
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre());
}

TEST_P(EventHotKeyServiceContract, GrantsACombinationThatTheOtherProgramGaveBack) {
    ASSERT_TRUE(system_->takeElsewhere(commandG));
    EventHotKeyRef reference;
    ASSERT_NE(registerHotKey(commandG, {.signature = 7, .id = 1}, reference), noErr);
    system_->giveBackElsewhere(commandG);
    take(commandG, 2);
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2"));
}

TEST_P(EventHotKeyServiceContract, KeepsACombinationFromOtherPrograms) {
    take(commandG, 1);
    EXPECT_FALSE(system_->takeElsewhere(commandG));
}

TEST_P(EventHotKeyServiceContract, LeavesACombinationToOtherProgramsOnceItWasUnregistered) {
    const auto reference = take(commandG, 1);
    EXPECT_EQ(service().unregisterEventHotKey(reference), noErr);
    EXPECT_TRUE(system_->takeElsewhere(commandG));
}

TEST_P(EventHotKeyServiceContract, RefusesToRegisterACombinationTwiceAndKeepsTheFirst) {
    take(commandG, 1);
    EventHotKeyRef second;
    EXPECT_EQ(registerHotKey(commandG, {.signature = 7, .id = 2}, second),
              hotkey::eventHotKeyExistsErr);
    EXPECT_TRUE(second.isNull());
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_P(EventHotKeyServiceContract, SendsNothingOnceACombinationWasUnregistered) {
    const auto reference = take(commandG, 1);
    EXPECT_EQ(service().unregisterEventHotKey(reference), noErr);
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre());
}

TEST_P(EventHotKeyServiceContract, RegistersACombinationAgain) {
    EXPECT_EQ(service().unregisterEventHotKey(take(commandG, 1)), noErr);
    take(commandG, 2);
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2"));
}

TEST_P(EventHotKeyServiceContract, AnswersUnregisteringNothingWithAnError) {
    EXPECT_NE(service().unregisterEventHotKey({}), noErr);
    const auto reference = take(commandG, 1);
    EXPECT_EQ(service().unregisterEventHotKey(reference), noErr);
    EXPECT_NE(service().unregisterEventHotKey(reference), noErr);
}

TEST_P(EventHotKeyServiceContract, RefusesAForeignTarget) {
    EventHotKeyRef reference;
    EXPECT_NE(service().registerEventHotKey(5, 0x100, {}, {}, 0, reference), noErr);
    EXPECT_TRUE(reference.isNull());
    EXPECT_TRUE(system_->takeElsewhere(commandG));
}

TEST_P(EventHotKeyServiceContract, OffersAnEventToTheHandlerInstalledLastAndThenToTheOthers) {
    take(commandG, 1);
    take(shiftCommandK, 2);
    std::vector<std::string> seen;
    install([&](EventRef event) {
        seen.push_back(name(event));
        return hotKeyID(event).id == 1 ? noErr : eventNotHandledErr;
    });
    tap(commandG);
    tap(shiftCommandK);
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2"));
    ASSERT_GE(seen.size(), 4U);
    seen.resize(4);
    EXPECT_THAT(seen, ElementsAre("down 1", "up 1", "down 2", "up 2"));
}

TEST_P(EventHotKeyServiceContract, CallsAHandlerForTheKindsOfEventsThatItAskedFor) {
    take(commandG, 1);
    std::vector<std::string> seen;
    install(
        [&](EventRef event) {
            seen.push_back(name(event));
            return eventNotHandledErr;
        },
        {{hotkey::kEventClassKeyboard, hotkey::kEventHotKeyReleased}});
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
    EXPECT_THAT(seen, ElementsAre("up 1", "up 99"));
}

TEST_P(EventHotKeyServiceContract, HandsAHandlerItsUserData) {
    take(commandG, 1);
    int data = 0;
    void* seen = nullptr;
    constexpr std::array types{
        EventTypeSpec{hotkey::kEventClassKeyboard, hotkey::kEventHotKeyPressed}};
    hotkey::EventHandlerRef reference;
    ASSERT_EQ(service().installEventHandler(
                  service().getEventDispatcherTarget(),
                  [&seen](auto /*next*/, auto /*event*/, void* userData) {
                      seen = userData;
                      return eventNotHandledErr;
                  },
                  types,
                  &data,
                  reference),
              noErr);
    tap(commandG);
    events();
    EXPECT_EQ(seen, &data);
}

TEST_P(EventHotKeyServiceContract, ReadsNoParameterButTheHotKeysId) {
    take(commandG, 1);
    std::vector<OSStatus> statuses;
    install([&](EventRef event) {
        std::array<char, 16> data{};
        const auto read = [&](std::uint32_t parameter, std::uint32_t type, std::size_t size) {
            statuses.push_back(
                service().getEventParameter(event, parameter, type, size, data.data()));
        };
        read(hotkey::fourCharCode("kcod"), hotkey::typeEventHotKeyID, 8);
        read(hotkey::kEventParamDirectObject, hotkey::fourCharCode("magn"), 8);
        read(hotkey::kEventParamDirectObject, hotkey::typeEventHotKeyID, 4);
        return eventNotHandledErr;
    });
    tap(commandG);
    events();
    ASSERT_FALSE(statuses.empty());
    EXPECT_THAT(statuses, testing::Each(testing::Ne(noErr)));
}

TEST_P(EventHotKeyServiceContract, LetsAHandlerGiveItsOwnCombinationBackAndTakeAnother) {
    auto reference = take(commandG, 1);
    install([&](EventRef event) {
        if (name(event) == "down 1") {
            EXPECT_EQ(service().unregisterEventHotKey(reference), noErr);
            reference = take(shiftCommandK, 2);
        }
        return eventNotHandledErr;
    });
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 1"));
    tap(commandG);
    tap(shiftCommandK);
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2"));
}

INSTANTIATE_TEST_SUITE_P(
    Systems,
    EventHotKeyServiceContract,
    testing::Values(SystemMaker{"Memory", [] { return std::make_unique<MemorySystem>(); }},
                    SystemMaker{"X11", [] { return std::make_unique<X11System>(); }}),
    [](const auto& system) { return system.param.name; });

} // namespace
