#include "Platform/Linux/X11/X11ClipboardAtoms.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

namespace {

struct NamedAtom {
    xcb_atom_t X11ClipboardAtoms::*atom;
    std::string_view name;
};

constexpr std::array namedAtoms{
    NamedAtom{&X11ClipboardAtoms::clipboard, "CLIPBOARD"},
    NamedAtom{&X11ClipboardAtoms::clipboardManager, "CLIPBOARD_MANAGER"},
    NamedAtom{&X11ClipboardAtoms::targets, "TARGETS"},
    NamedAtom{&X11ClipboardAtoms::multiple, "MULTIPLE"},
    NamedAtom{&X11ClipboardAtoms::timestamp, "TIMESTAMP"},
    NamedAtom{&X11ClipboardAtoms::saveTargets, "SAVE_TARGETS"},
    NamedAtom{&X11ClipboardAtoms::atomPair, "ATOM_PAIR"},
    NamedAtom{&X11ClipboardAtoms::incr, "INCR"},
    NamedAtom{&X11ClipboardAtoms::null, "NULL"},
    NamedAtom{&X11ClipboardAtoms::utf8String, "UTF8_STRING"},
    NamedAtom{&X11ClipboardAtoms::text, "TEXT"},
    NamedAtom{&X11ClipboardAtoms::plainText, "text/plain"},
    NamedAtom{&X11ClipboardAtoms::plainTextUtf8, "text/plain;charset=utf-8"},
    NamedAtom{&X11ClipboardAtoms::html, "text/html"},
    NamedAtom{&X11ClipboardAtoms::uriList, "text/uri-list"},
    NamedAtom{&X11ClipboardAtoms::gnomeCopiedFiles, "x-special/gnome-copied-files"},
    NamedAtom{&X11ClipboardAtoms::mateCopiedFiles, "x-special/mate-copied-files"},
    NamedAtom{&X11ClipboardAtoms::kdeCutSelection, "application/x-kde-cutselection"},
    NamedAtom{&X11ClipboardAtoms::exchange, "PASTEWISE_CLIPBOARD"},
};

} // namespace

X11ClipboardAtoms::X11ClipboardAtoms(const X11Connection& connection) {
    std::array<xcb_intern_atom_cookie_t, namedAtoms.size()> cookies{};
    for (std::size_t i = 0; i < namedAtoms.size(); ++i) {
        const std::string_view name = namedAtoms.at(i).name;
        cookies.at(i) = xcb_intern_atom(
            connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t i = 0; i < namedAtoms.size(); ++i) {
        const XcbPointer<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection.get(), cookies.at(i), nullptr));
        if (reply) {
            this->*namedAtoms.at(i).atom = reply->atom;
        }
    }
}

} // namespace platform
