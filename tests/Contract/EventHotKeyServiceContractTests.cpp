#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "tests/Contract/EventHotKeyServiceContract.h"

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

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

using hotkey::EventHotKeyID;
using hotkey::EventHotKeyRef;
using hotkey::eventNotHandledErr;
using hotkey::EventRef;
using hotkey::EventTypeSpec;
using hotkey::noErr;
using hotkey::OSStatus;
using testing::ElementsAre;

TEST_P(EventHotKeyServiceContract, SendsAPressAndAReleaseWithTheId) {
    take(commandG, 1);
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_P(EventHotKeyServiceContract, EventsCarryTheSignature) {
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

TEST_P(EventHotKeyServiceContract, DistinguishesCombinations) {
    take(commandG, 1);
    take(shiftCommandK, 2);
    tap(shiftCommandK);
    tap(commandG);
    tap({0x28, hotkey::cmdKey});
    tap({5, hotkey::cmdKey | hotkey::shiftKey});
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2", "down 1", "up 1"));
}

TEST_P(EventHotKeyServiceContract, RefusesACombinationTakenByAnotherProgram) {
    ASSERT_TRUE(backend_->takeElsewhere(commandG));
    EventHotKeyRef reference;
    EXPECT_NE(registerHotKey(commandG, {.signature = 7, .id = 1}, reference), noErr);
    EXPECT_TRUE(reference.isNull());
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre());
}

TEST_P(EventHotKeyServiceContract, GrantsACombinationThatAnotherProgramReleased) {
    ASSERT_TRUE(backend_->takeElsewhere(commandG));
    EventHotKeyRef reference;
    ASSERT_NE(registerHotKey(commandG, {.signature = 7, .id = 1}, reference), noErr);
    backend_->giveBackElsewhere(commandG);
    take(commandG, 2);
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2"));
}

TEST_P(EventHotKeyServiceContract, KeepsACombinationFromOtherPrograms) {
    take(commandG, 1);
    EXPECT_FALSE(backend_->takeElsewhere(commandG));
}

TEST_P(EventHotKeyServiceContract, UnregisteringFreesACombinationForOtherPrograms) {
    const auto reference = take(commandG, 1);
    EXPECT_EQ(service().unregisterEventHotKey(reference), noErr);
    EXPECT_TRUE(backend_->takeElsewhere(commandG));
}

TEST_P(EventHotKeyServiceContract, RefusesASecondRegistrationOfACombination) {
    take(commandG, 1);
    EventHotKeyRef second;
    EXPECT_EQ(registerHotKey(commandG, {.signature = 7, .id = 2}, second),
              hotkey::eventHotKeyExistsErr);
    EXPECT_TRUE(second.isNull());
    tap(commandG);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_P(EventHotKeyServiceContract, SendsNothingAfterUnregistering) {
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

TEST_P(EventHotKeyServiceContract, UnregisteringANullOrOldReferenceIsAnError) {
    EXPECT_NE(service().unregisterEventHotKey({}), noErr);
    const auto reference = take(commandG, 1);
    EXPECT_EQ(service().unregisterEventHotKey(reference), noErr);
    EXPECT_NE(service().unregisterEventHotKey(reference), noErr);
}

TEST_P(EventHotKeyServiceContract, RefusesAForeignTarget) {
    EventHotKeyRef reference;
    EXPECT_NE(service().registerEventHotKey(5, 0x100, {}, {}, 0, reference), noErr);
    EXPECT_TRUE(reference.isNull());
    EXPECT_TRUE(backend_->takeElsewhere(commandG));
    hotkey::EventHandlerRef handler;
    EXPECT_NE(service().installEventHandler(
                  {}, [](auto, auto, auto) { return noErr; }, {}, nullptr, handler),
              noErr);
    EXPECT_TRUE(handler.isNull());
}

TEST_P(EventHotKeyServiceContract, OffersAnEventToTheNewestHandlerFirst) {
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

TEST_P(EventHotKeyServiceContract, CallsAHandlerForItsEventTypesOnly) {
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

TEST_P(EventHotKeyServiceContract, PassesUserDataToAHandler) {
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

TEST_P(EventHotKeyServiceContract, ReadsNoParameterExceptTheHotKeyId) {
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

TEST_P(EventHotKeyServiceContract, AHandlerMayReplaceItsOwnCombination) {
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

} // namespace contract
