#include "HotKey/HotKey.h"

#include "HotKey/HotKeysController.h"

#include <utility>

namespace hotkey {

HotKey::HotKey(HotKeysController& controller, KeyCombo keyCombo, Handler onKeyDown, Handler onKeyUp)
    : keyDownHandler(std::move(onKeyDown)),
      keyUpHandler(std::move(onKeyUp)),
      keyCombo_(keyCombo),
      controller_(controller.weakReference()) {
    controller.register_(*this);
}

HotKey::HotKey(HotKeysController& controller,
               std::uint32_t carbonKeyCode,
               std::uint32_t carbonModifiers,
               Handler onKeyDown,
               Handler onKeyUp)
    : HotKey(controller,
             KeyCombo(carbonKeyCode, carbonModifiers),
             std::move(onKeyDown),
             std::move(onKeyUp)) {}

HotKey::HotKey(HotKeysController& controller,
               Key key,
               ModifierFlags modifiers,
               Handler onKeyDown,
               Handler onKeyUp)
    : HotKey(controller, KeyCombo(key, modifiers), std::move(onKeyDown), std::move(onKeyUp)) {}

HotKey::~HotKey() {
    self_.end();
    if (auto* const controller = controller_.get()) {
        controller->unregister(*this);
    }
}

void HotKey::setIsPaused(bool isPaused) {
    isPaused_ = isPaused;
    auto* const controller = controller_.get();
    if (controller == nullptr) {
        return;
    }
    if (isPaused) {
        controller->unregister(*this);
    } else {
        controller->register_(*this);
    }
}

} // namespace hotkey
