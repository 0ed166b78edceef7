#include "Platform/Linux/X11/X11ClipboardContext.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>

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
    NamedAtom{&X11ClipboardAtoms::exchange, "PASTEWISE_CLIPBOARD"},
};

int queryOwnerChangeEvent(const X11Connection& connection) {
    // The server serves the extension only to clients that have negotiated its version.
    const XcbPointer<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection.get(),
        xcb_xfixes_query_version(
            connection.get(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
    return (extension != nullptr ? extension->first_event : 0) + XCB_XFIXES_SELECTION_NOTIFY;
}

} // namespace

X11ClipboardAtoms::X11ClipboardAtoms(const X11Connection& connection) {
    for (const TextFormat& format : acceptedFormats) {
        formats_.emplace_back(format.name, XCB_ATOM_NONE);
    }
    for (const std::string_view name : fileListFormats) {
        formats_.emplace_back(name, XCB_ATOM_NONE);
    }
    formats_.emplace_back(uriListFormat, XCB_ATOM_NONE);

    std::vector<std::string_view> names;
    std::vector<xcb_atom_t*> atoms;
    for (const NamedAtom& named : namedAtoms) {
        names.push_back(named.name);
        atoms.push_back(&(this->*named.atom));
    }
    for (auto& [name, atom] : formats_) {
        names.push_back(name);
        atoms.push_back(&atom);
    }
    const std::vector<xcb_atom_t> values = connection.atoms(names);
    for (std::size_t i = 0; i < values.size(); ++i) {
        *atoms[i] = values[i];
    }
}

xcb_atom_t X11ClipboardAtoms::format(std::string_view name) const {
    return std::find_if(formats_.begin(),
                        formats_.end(),
                        [&](const auto& format) { return format.first == name; })
        ->second;
}

FormatNames X11ClipboardAtoms::formatNames(const std::vector<xcb_atom_t>& offers) const {
    FormatNames names;
    for (const auto& [name, atom] : formats_) {
        if (std::find(offers.begin(), offers.end(), atom) != offers.end()) {
            names.push_back(name);
        }
    }
    return names;
}

X11ClipboardContext::X11ClipboardContext(std::unique_ptr<X11Connection> openConnection,
                                         const TransferLimits& transferLimits,
                                         foundation::Logger clipboardLogger)
    : connection(std::move(openConnection)),
      events(*connection),
      atoms(*connection),
      ownerChangeEvent(queryOwnerChangeEvent(*connection)),
      limits(transferLimits),
      logger(clipboardLogger) {}

} // namespace platform
