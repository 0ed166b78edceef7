#include "HotKey/ModifierFlags.h"

#include <array>
#include <string_view>

namespace hotkey {

namespace {

struct Modifier {
    ModifierFlags flag;
    std::uint32_t carbonFlag;
    std::string_view glyph;
};

// In the order of the description.
constexpr std::array modifiers{
    Modifier{ModifierFlags::control, controlKey, "\u2303"},
    Modifier{ModifierFlags::option, optionKey, "\u2325"},
    Modifier{ModifierFlags::shift, shiftKey, "\u21E7"},
    Modifier{ModifierFlags::command, cmdKey, "\u2318"},
};

} // namespace

ModifierFlags ModifierFlags::fromCarbonFlags(std::uint32_t carbonFlags) {
    ModifierFlags flags;
    for (const Modifier& modifier : modifiers) {
        if ((carbonFlags & modifier.carbonFlag) != 0) {
            flags = flags | modifier.flag;
        }
    }
    return flags;
}

std::uint32_t ModifierFlags::carbonFlags() const {
    std::uint32_t flags = 0;
    for (const Modifier& modifier : modifiers) {
        if (contains(modifier.flag)) {
            flags |= modifier.carbonFlag;
        }
    }
    return flags;
}

std::string ModifierFlags::description() const {
    std::string glyphs;
    for (const Modifier& modifier : modifiers) {
        if (contains(modifier.flag)) {
            glyphs += modifier.glyph;
        }
    }
    return glyphs;
}

} // namespace hotkey
