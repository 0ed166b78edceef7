#include "Platform/Linux/X11/X11Modifiers.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <span>

namespace platform {

namespace {

constexpr xcb_keysym_t numLock = 0xFF7F;
constexpr xcb_keysym_t scrollLock = 0xFF14;
constexpr xcb_keysym_t metaLeft = 0xFFE7;
constexpr xcb_keysym_t metaRight = 0xFFE8;
constexpr xcb_keysym_t altLeft = 0xFFE9;
constexpr xcb_keysym_t altRight = 0xFFEA;
constexpr xcb_keysym_t superLeft = 0xFFEB;
constexpr xcb_keysym_t superRight = 0xFFEC;

constexpr xcb_keycode_t x11KeyCode(int evdevKeyCode) {
    return static_cast<xcb_keycode_t>(evdevKeyCode + 8);
}

/// The keyboard as the server describes it: the keys of each modifier, and the symbols of each key.
class KeyboardDescription {
  public:
    explicit KeyboardDescription(const X11Connection& connection)
        : firstKeyCode_(xcb_get_setup(connection.get())->min_keycode) {
        const auto lastKeyCode = xcb_get_setup(connection.get())->max_keycode;
        const auto modifiers = xcb_get_modifier_mapping(connection.get());
        const auto symbols =
            xcb_get_keyboard_mapping(connection.get(),
                                     firstKeyCode_,
                                     static_cast<std::uint8_t>(lastKeyCode - firstKeyCode_ + 1));
        modifiers_.reset(xcb_get_modifier_mapping_reply(connection.get(), modifiers, nullptr));
        symbols_.reset(xcb_get_keyboard_mapping_reply(connection.get(), symbols, nullptr));
    }

    [[nodiscard]] bool isComplete() const { return modifiers_ && symbols_; }

    /// The first modifier's bit one of whose keys satisfies `isWanted`; 0 when there is none.
    template <typename Predicate>
    [[nodiscard]] std::uint16_t maskOf(const Predicate& isWanted) const {
        for (unsigned modifier = 0; modifier < 8; ++modifier) {
            const auto keys = keysOf(modifier);
            if (std::any_of(keys.begin(), keys.end(), [&](xcb_keycode_t key) {
                    return key != 0 && isWanted(key);
                })) {
                return static_cast<std::uint16_t>(1U << modifier);
            }
        }
        return 0;
    }

    [[nodiscard]] std::uint16_t maskOfSymbols(std::initializer_list<xcb_keysym_t> wanted) const {
        return maskOf([&](xcb_keycode_t key) {
            const auto symbols = symbolsOf(key);
            return std::find_first_of(
                       symbols.begin(), symbols.end(), wanted.begin(), wanted.end()) !=
                   symbols.end();
        });
    }

    [[nodiscard]] std::uint16_t maskOfPlaces(std::initializer_list<int> evdevKeyCodes) const {
        return maskOf([&](xcb_keycode_t key) {
            return std::any_of(evdevKeyCodes.begin(), evdevKeyCodes.end(), [&](int code) {
                return x11KeyCode(code) == key;
            });
        });
    }

    /// Shift and Control have bits of their own, but a keyboard need not have a key for them.
    [[nodiscard]] std::uint16_t maskIfAnyKey(unsigned modifier) const {
        const auto keys = keysOf(modifier);
        const bool hasKey =
            std::any_of(keys.begin(), keys.end(), [](xcb_keycode_t key) { return key != 0; });
        return hasKey ? static_cast<std::uint16_t>(1U << modifier) : std::uint16_t{0};
    }

  private:
    [[nodiscard]] std::span<const xcb_keycode_t> keysOf(unsigned modifier) const {
        const std::size_t perModifier = modifiers_->keycodes_per_modifier;
        return {xcb_get_modifier_mapping_keycodes(modifiers_.get()) + (modifier * perModifier),
                perModifier};
    }

    [[nodiscard]] std::span<const xcb_keysym_t> symbolsOf(xcb_keycode_t key) const {
        const std::size_t perKey = symbols_->keysyms_per_keycode;
        const auto all = std::span(
            xcb_get_keyboard_mapping_keysyms(symbols_.get()),
            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(symbols_.get())));
        const std::size_t first = static_cast<std::size_t>(key - firstKeyCode_) * perKey;
        return key < firstKeyCode_ || first + perKey > all.size() ? all.first(0)
                                                                  : all.subspan(first, perKey);
    }

    xcb_keycode_t firstKeyCode_;
    XcbPointer<xcb_get_modifier_mapping_reply_t> modifiers_;
    XcbPointer<xcb_get_keyboard_mapping_reply_t> symbols_;
};

std::uint16_t firstPresent(std::initializer_list<std::uint16_t> masks) {
    const auto* const found =
        std::find_if(masks.begin(), masks.end(), [](std::uint16_t mask) { return mask != 0; });
    return found == masks.end() ? std::uint16_t{0} : *found;
}

} // namespace

std::optional<X11Modifiers> X11Modifiers::query(const X11Connection& connection) {
    const KeyboardDescription keyboard(connection);
    if (!keyboard.isComplete()) {
        return std::nullopt;
    }
    X11Modifiers modifiers;
    modifiers.shift_ = keyboard.maskIfAnyKey(XCB_MAP_INDEX_SHIFT);
    modifiers.control_ = keyboard.maskIfAnyKey(XCB_MAP_INDEX_CONTROL);
    // A layout may have other symbols on these keys: Meta where Alt or Super is meant, for example.
    // The place of the key decides then.
    modifiers.command_ = firstPresent({keyboard.maskOfSymbols({superLeft, superRight}),
                                       keyboard.maskOfPlaces({KEY_LEFTMETA, KEY_RIGHTMETA})});
    modifiers.option_ = firstPresent({keyboard.maskOfSymbols({altLeft, altRight}),
                                      keyboard.maskOfPlaces({KEY_LEFTALT}),
                                      keyboard.maskOfSymbols({metaLeft, metaRight})});
    const auto locks =
        static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | keyboard.maskOfSymbols({numLock}) |
                                   keyboard.maskOfSymbols({scrollLock}));
    const auto held = static_cast<std::uint16_t>(modifiers.shift_ | modifiers.control_ |
                                                 modifiers.option_ | modifiers.command_);
    // A bit that a lock shares with a modifier must keep its meaning as the modifier.
    modifiers.locks_ = static_cast<std::uint16_t>(locks & ~held);
    return modifiers;
}

std::optional<std::uint16_t> X11Modifiers::mask(std::uint32_t carbonModifiers) const {
    const std::array<std::pair<std::uint32_t, std::uint16_t>, 4> modifiers{
        {{hotkey::cmdKey, command_},
         {hotkey::optionKey, option_},
         {hotkey::controlKey, control_},
         {hotkey::shiftKey, shift_}}};
    std::uint16_t mask = 0;
    for (const auto& [carbonModifier, modifierMask] : modifiers) {
        if ((carbonModifiers & carbonModifier) == 0) {
            continue;
        }
        if (modifierMask == 0) {
            return std::nullopt;
        }
        mask = static_cast<std::uint16_t>(mask | modifierMask);
        carbonModifiers &= ~carbonModifier;
    }
    return carbonModifiers == 0 ? std::optional(mask) : std::nullopt;
}

hotkey::ModifierFlags X11Modifiers::modifierFlags(std::uint16_t state) const {
    using hotkey::ModifierFlags;
    const std::array<std::pair<ModifierFlags, std::uint16_t>, 5> meanings{
        {{ModifierFlags::command, command_},
         {ModifierFlags::option, option_},
         {ModifierFlags::control, control_},
         {ModifierFlags::shift, shift_},
         {ModifierFlags::capsLock, XCB_MOD_MASK_LOCK}}};
    ModifierFlags flags;
    for (const auto& [flag, mask] : meanings) {
        if ((state & mask) != 0) {
            flags = flags | flag;
        }
    }
    return flags;
}

std::uint16_t X11Modifiers::heldModifiers(std::uint16_t state) const {
    constexpr unsigned everyModifier = 0xFF;
    return static_cast<std::uint16_t>(state & everyModifier & ~unsigned{locks_});
}

std::vector<std::uint16_t> X11Modifiers::lockStates() const {
    std::vector<std::uint16_t> states;
    // Counts down through all subsets of the bits.
    for (unsigned subset = locks_;; subset = (subset - 1) & locks_) {
        states.push_back(static_cast<std::uint16_t>(subset));
        if (subset == 0) {
            return states;
        }
    }
}

} // namespace platform
