#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Logger.h"
#include "Platform/Linux/Clipboard/TextTransfer.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"

#include <xcb/xcb.h>

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// The atoms of clipboard transfers on one connection, all interned in a single round trip. Each is
/// XCB_ATOM_NONE if the server is gone.
struct X11ClipboardAtoms {
    explicit X11ClipboardAtoms(const X11Connection& connection);

    xcb_atom_t clipboard = XCB_ATOM_NONE;
    xcb_atom_t clipboardManager = XCB_ATOM_NONE;
    xcb_atom_t targets = XCB_ATOM_NONE;
    xcb_atom_t multiple = XCB_ATOM_NONE;
    xcb_atom_t timestamp = XCB_ATOM_NONE;
    xcb_atom_t saveTargets = XCB_ATOM_NONE;
    xcb_atom_t atomPair = XCB_ATOM_NONE;
    xcb_atom_t incr = XCB_ATOM_NONE;
    xcb_atom_t null = XCB_ATOM_NONE;
    xcb_atom_t utf8String = XCB_ATOM_NONE;

    /// The property of our own windows that receives answers.
    xcb_atom_t exchange = XCB_ATOM_NONE;

    /// The atom of a name in Clipboard/TextTransfer.h.
    [[nodiscard]] xcb_atom_t format(std::string_view name) const;

    /// Those of `offers` that Clipboard/TextTransfer.h names.
    [[nodiscard]] FormatNames formatNames(const std::vector<xcb_atom_t>& offers) const;

  private:
    std::vector<std::pair<std::string_view, xcb_atom_t>> formats_;
};

/// What the classes of the X11 clipboard share. Main thread only.
struct X11ClipboardContext : foundation::Pinned {
    X11ClipboardContext(std::unique_ptr<X11Connection> openConnection,
                        const TransferLimits& transferLimits,
                        foundation::Logger clipboardLogger);

    const std::unique_ptr<X11Connection> connection;
    X11EventQueue events;
    const X11ClipboardAtoms atoms;
    /// The type of the XFixes event that reports a change of a selection's owner.
    const int ownerChangeEvent;
    const TransferLimits limits;
    const foundation::Logger logger;
};

} // namespace platform
