#include "HotKey/HotKey.h"
#include "HotKey/HotKeysController.h"
#include "Platform/Memory/MemoryEventHotKeyService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace {

using hotkey::HotKey;
using hotkey::HotKeysController;
using hotkey::KeyCombo;
using hotkey::noErr;
using platform::MemoryEventHotKeyService;
using testing::ElementsAre;

constexpr std::uint32_t ourSignature = 0x515A686B;

class HotKeysControllerTests : public testing::Test {
  protected:
    static constexpr MemoryEventHotKeyService::Combination commandG{5, 0x100};

    [[nodiscard]] HotKey::Handler note(char mark) {
        return [this, mark] { notes_ += mark; };
    }

    MemoryEventHotKeyService service_;
    HotKeysController controller_{service_};
    std::string notes_;
};

TEST_F(HotKeysControllerTests, SignatureIsTheFourCharacterCode) {
    EXPECT_EQ(HotKeysController::signature, ourSignature);
}

TEST_F(HotKeysControllerTests, CountsIdsFrom1AndNeverReusesThem) {
    std::optional<HotKey> hotKey(std::in_place, controller_, KeyCombo(5, 0x100));
    EXPECT_EQ(controller_.hotKeyBox(*hotKey)->carbonHotKeyID, 1U);
    hotKey.reset();
    hotKey.emplace(controller_, KeyCombo(5, 0x100));
    EXPECT_EQ(controller_.hotKeyBox(*hotKey)->carbonHotKeyID, 2U);
    EXPECT_THAT(
        service_.journal()->calls(),
        ElementsAre(
            "register 5 0x100 as QZhk 1", "install", "unregister 1", "register 5 0x100 as QZhk 2"));
}

TEST_F(HotKeysControllerTests, KeepsTwoEntriesForOneCombination) {
    const HotKey first(controller_, KeyCombo(5, 0x100), note('a'));
    const HotKey second(controller_, KeyCombo(5, 0x100), note('b'));
    EXPECT_THAT(
        service_.journal()->calls(),
        ElementsAre("register 5 0x100 as QZhk 1", "install", "register 5 0x100 as QZhk 2 refused"));
    EXPECT_EQ(controller_.hotKey(1), &first);
    EXPECT_EQ(controller_.hotKey(2), &second);
    EXPECT_TRUE(controller_.hotKeyBox(second)->carbonEventHotKey.isNull());
    service_.press(commandG);
    EXPECT_EQ(notes_, "a");
}

TEST_F(HotKeysControllerTests, InstallsNoHandlerBeforeARegistrationSucceeds) {
    service_.refuseRegistrations(hotkey::eventHotKeyExistsErr);
    const HotKey refused(controller_, KeyCombo(5, 0x100));
    EXPECT_TRUE(service_.installations().empty());
    service_.refuseRegistrations(noErr);
    const HotKey granted(controller_, KeyCombo(4, 0x100));
    EXPECT_EQ(service_.installations().size(), 1U);
}

TEST_F(HotKeysControllerTests, InstallsItsHandlerOnce) {
    {
        HotKey first(controller_, KeyCombo(5, 0x100));
        const HotKey second(controller_, KeyCombo(4, 0x100));
        first.setIsPaused(true);
        first.setIsPaused(false);
    }
    const HotKey third(controller_, KeyCombo(5, 0x100));
    EXPECT_EQ(service_.installations().size(), 1U);
}

TEST_F(HotKeysControllerTests, RetriesARefusedHandlerInstallation) {
    service_.refuseInstallations(hotkey::paramErr);
    const HotKey first(controller_, KeyCombo(5, 0x100));
    service_.refuseInstallations(noErr);
    const HotKey second(controller_, KeyCombo(4, 0x100));
    EXPECT_THAT(service_.journal()->calls(),
                ElementsAre("register 5 0x100 as QZhk 1",
                            "install refused",
                            "register 4 0x100 as QZhk 2",
                            "install"));
}

TEST_F(HotKeysControllerTests, InstallsForPressesAndReleasesWithoutUserData) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    const auto& installation = service_.installations().at(0);
    EXPECT_THAT(installation.types,
                ElementsAre(hotkey::EventTypeSpec{.eventClass = 0x6B657962, .eventKind = 5},
                            hotkey::EventTypeSpec{.eventClass = 0x6B657962, .eventKind = 6}));
    EXPECT_EQ(installation.userData, nullptr);
}

TEST_F(HotKeysControllerTests, RegisteringTwiceDoesNothing) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    controller_.register_(hotKey);
    EXPECT_EQ(service_.journal()->calls().size(), 2U);
    EXPECT_EQ(controller_.hotKeyBox(hotKey)->carbonHotKeyID, 1U);
}

TEST_F(HotKeysControllerTests, UnregisteringTwiceDoesNothing) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    controller_.unregister(hotKey);
    controller_.unregister(hotKey);
    EXPECT_THAT(service_.journal()->calls(),
                ElementsAre("register 5 0x100 as QZhk 1", "install", "unregister 1"));
    EXPECT_EQ(controller_.hotKeyBox(hotKey), nullptr);
}

TEST_F(HotKeysControllerTests, KeepsAndUnregistersARefusedHotKey) {
    service_.takeElsewhere(commandG);
    std::optional<HotKey> hotKey(std::in_place, controller_, KeyCombo(5, 0x100));
    EXPECT_EQ(controller_.hotKey(1), &*hotKey);
    EXPECT_TRUE(controller_.hotKeyBox(*hotKey)->carbonEventHotKey.isNull());
    hotKey.reset();
    EXPECT_EQ(controller_.hotKey(1), nullptr);
    EXPECT_THAT(service_.journal()->calls(),
                ElementsAre("register 5 0x100 as QZhk 1 refused", "unregister nothing"));
}

TEST_F(HotKeysControllerTests, TreatsSuccessWithANullReferenceAsARefusal) {
    service_.handOutNullReferences();
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    EXPECT_TRUE(controller_.hotKeyBox(hotKey)->carbonEventHotKey.isNull());
    EXPECT_TRUE(service_.installations().empty());
}

TEST_F(HotKeysControllerTests, IsSilentAboutARefusal) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    service_.takeElsewhere(commandG);
    { const HotKey hotKey(controller_, KeyCombo(5, 0x100)); }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(HotKeysControllerTests, TreatsAnErrorWithAReferenceAsARefusal) {
    service_.refuseRegistrations(hotkey::eventHotKeyExistsErr);
    service_.setReferencesOfRefusals();
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    EXPECT_TRUE(controller_.hotKeyBox(hotKey)->carbonEventHotKey.isNull());
    EXPECT_TRUE(service_.installations().empty());
}

/// Tests of what the registry holds within a call to the system.
class HotKeysControllerOrderTests : public HotKeysControllerTests {
  protected:
    /// Runs `look` within that call.
    template <typename Look>
    void during(std::string_view awaited, Look look) {
        service_.journal()->setWhileCalled([this, awaited, look](std::string_view call) {
            if (call == awaited) {
                ++lookCount_;
                look();
            }
        });
    }

    int lookCount_ = 0;
};

TEST_F(HotKeysControllerOrderTests, StoresTheEntryBeforeRegistering) {
    during("register 5 0x100 as QZhk 1", [this] { EXPECT_NE(controller_.hotKey(1), nullptr); });
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    EXPECT_EQ(lookCount_, 1);
}

TEST_F(HotKeysControllerOrderTests, StoresTheReferenceBeforeInstallingTheHandler) {
    during("install", [this] {
        const HotKey* const hotKey = controller_.hotKey(1);
        EXPECT_FALSE(controller_.hotKeyBox(*hotKey)->carbonEventHotKey.isNull());
    });
    const HotKey hotKey(controller_, KeyCombo(5, 0x100));
    EXPECT_EQ(lookCount_, 1);
}

TEST_F(HotKeysControllerOrderTests, KeepsTheEntryOfAPausedHotKeyUntilItIsUnregistered) {
    HotKey hotKey(controller_, KeyCombo(5, 0x100));
    during("unregister 1", [&] { EXPECT_EQ(controller_.hotKey(1), &hotKey); });
    hotKey.setIsPaused(true);
    EXPECT_EQ(lookCount_, 1);
    EXPECT_EQ(controller_.hotKeyBox(hotKey), nullptr);
}

TEST_F(HotKeysControllerOrderTests, DoesNotFindAHotKeyBeingDestroyed) {
    auto hotKey = std::make_unique<HotKey>(controller_, KeyCombo(5, 0x100));
    during("unregister 1", [this, dying = hotKey.get()] {
        EXPECT_NE(controller_.hotKeyBox(*dying), nullptr);
        EXPECT_EQ(controller_.hotKey(1), nullptr);
    });
    hotKey.reset();
    EXPECT_EQ(lookCount_, 1);
}

TEST_F(HotKeysControllerOrderTests, DeclinesAnEventForAHotKeyBeingDestroyedAndRemovesItsEntry) {
    auto hotKey = std::make_unique<HotKey>(controller_, KeyCombo(5, 0x100), note('d'));
    during("unregister 1", [this, dying = hotKey.get()] {
        EXPECT_EQ(service_.send({.hotKeyID = {.signature = ourSignature, .id = 1}}), -9874);
        EXPECT_EQ(controller_.hotKeyBox(*dying), nullptr);
    });
    hotKey.reset();
    EXPECT_EQ(lookCount_, 1);
    EXPECT_EQ(notes_, "");
    EXPECT_TRUE(service_.registered().empty());
}

TEST(HotKeysControllerDeathTest, DiesWhenItRunsOutOfIds) {
    MemoryEventHotKeyService service;
    HotKeysController controller(service, std::numeric_limits<std::uint32_t>::max() - 1);
    const HotKey last(controller, KeyCombo(5, 0x100));
    EXPECT_EQ(controller.hotKeyBox(last)->carbonHotKeyID, 4294967295U);
    EXPECT_DEATH(HotKey(controller, KeyCombo(4, 0x100)),
                 "Fatal error: there are no ids left for hot keys");
}

TEST_F(HotKeysControllerTests, CallsTheDownHandlerOnPressAndTheUpHandlerOnRelease) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'), note('u'));
    EXPECT_EQ(service_.press(commandG), noErr);
    EXPECT_EQ(notes_, "d");
    EXPECT_EQ(service_.release(commandG), noErr);
    EXPECT_EQ(notes_, "du");
}

TEST_F(HotKeysControllerTests, CallsOnlyTheHotKeyOfTheEvent) {
    const HotKey first(controller_, KeyCombo(5, 0x100), note('a'));
    const HotKey second(controller_, KeyCombo(4, 0x100), note('b'));
    service_.press({4, 0x100});
    EXPECT_EQ(notes_, "b");
}

TEST_F(HotKeysControllerTests, DeclinesAnEventWithAForeignSignature) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'));
    EXPECT_EQ(service_.send({.hotKeyID = {.signature = ourSignature + 1, .id = 1}}), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesAKeyUpWithoutAHandler) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'));
    EXPECT_EQ(service_.release(commandG), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesAKeyDownWithoutAHandler) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), {}, note('u'));
    EXPECT_EQ(service_.press(commandG), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesANullEvent) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'));
    EXPECT_EQ(service_.installations().at(0).handler({}, {}, nullptr), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, ReturnsTheErrorOfReadingAnEvent) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'));
    service_.refuseParameters(-9870);
    EXPECT_EQ(service_.press(commandG), -9870);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesAnEventWithAnUnknownId) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'));
    EXPECT_EQ(service_.send({.hotKeyID = {.signature = ourSignature, .id = 2}}), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesALateEventForADestroyedHotKey) {
    std::optional<HotKey> hotKey(std::in_place, controller_, KeyCombo(5, 0x100), note('d'));
    hotKey.reset();
    EXPECT_EQ(service_.send({.hotKeyID = {.signature = ourSignature, .id = 1}}), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesEventsOtherThanPressAndRelease) {
    const HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'), note('u'));
    MemoryEventHotKeyService::Event event{.hotKeyID = {.signature = ourSignature, .id = 1},
                                          .kind = 7};
    EXPECT_EQ(service_.installations().at(0).handler({}, {&event}, nullptr), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, DeclinesAnEventForAPausedHotKeyThatIsRegistered) {
    HotKey hotKey(controller_, KeyCombo(5, 0x100), note('d'), note('u'));
    hotKey.setIsPaused(true);
    controller_.register_(hotKey);
    EXPECT_EQ(service_.press(commandG), -9874);
    EXPECT_EQ(service_.release(commandG), -9874);
    EXPECT_EQ(notes_, "");
}

TEST_F(HotKeysControllerTests, FindsEntriesAndHotKeys) {
    const HotKey first(controller_, KeyCombo(5, 0x100));
    const HotKey second(controller_, KeyCombo(4, 0x100));
    const auto* const box = controller_.hotKeyBox(second);
    EXPECT_EQ(box->identifier, second.identifier());
    EXPECT_EQ(box->carbonHotKeyID, 2U);
    EXPECT_FALSE(box->carbonEventHotKey.isNull());
    EXPECT_EQ(controller_.hotKey(1), &first);
    EXPECT_EQ(controller_.hotKey(3), nullptr);
}

TEST(HotKeysControllerLifetimeTests, UnregistersOnDestructionAndDeclinesLateEvents) {
    MemoryEventHotKeyService service;
    std::string notes;
    auto controller = std::make_unique<HotKeysController>(service);
    const HotKey hotKey(*controller, KeyCombo(5, 0x100), [&] { notes += 'd'; });
    controller.reset();
    EXPECT_TRUE(service.registered().empty());
    EXPECT_EQ(service.send({.hotKeyID = {.signature = ourSignature, .id = 1}}), -9874);
    EXPECT_EQ(notes, "");
}

TEST(HotKeysControllerLifetimeTests, AHandlerMayDestroyTheControllerAndThenTheHotKey) {
    MemoryEventHotKeyService service;
    auto controller = std::make_unique<HotKeysController>(service);
    std::optional<HotKey> hotKey(std::in_place, *controller, KeyCombo(5, 0x100));
    hotKey->keyDownHandler = [&] {
        controller.reset();
        hotKey.reset();
    };
    EXPECT_EQ(service.press({5, 0x100}), noErr);
    EXPECT_THAT(service.journal()->calls(),
                ElementsAre("register 5 0x100 as QZhk 1", "install", "unregister 1"));
}

} // namespace
