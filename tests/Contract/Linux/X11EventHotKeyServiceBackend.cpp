#include "HotKey/Key.h"
#include "Platform/Linux/Keys/KeyCodes.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "tests/Contract/EventHotKeyServiceContract.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/OtherX11Program.h"
#include "tests/Support/PrivateXServer.h"
#include "tests/Support/QtTestLoop.h"

#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace contract {

namespace {

class X11EventHotKeyServiceBackend final : public EventHotKeyServiceBackend {
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

    static std::uint8_t x11KeyCode(Combination combination) {
        const auto key = hotkey::keyFromCarbonKeyCode(combination.first).value();
        return static_cast<std::uint8_t>(platform::xkbKeyCode(key));
    }

    static int key(Combination combination) { return x11KeyCode(combination) - 8; }

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

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         EventHotKeyServiceContract,
                         (backend<EventHotKeyServiceBackend, X11EventHotKeyServiceBackend>("X11")),
                         nameOfBackend<EventHotKeyServiceBackend>);

} // namespace contract
