#pragma once

#include "Platform/Linux/X11/X11Connection.h"

#include <xcb/xcb.h>

namespace platform {

/// The names that clipboard traffic is made of, as numbered by the server of a connection. Making
/// one asks for all of them in a single round trip; each is XCB_ATOM_NONE when the server is gone.
struct X11ClipboardAtoms {
    explicit X11ClipboardAtoms(const X11Connection& connection);

    // Selections.
    xcb_atom_t clipboard = XCB_ATOM_NONE;
    xcb_atom_t clipboardManager = XCB_ATOM_NONE;

    // Questions to an owner about its contents, and the types of their answers.
    xcb_atom_t targets = XCB_ATOM_NONE;
    xcb_atom_t multiple = XCB_ATOM_NONE;
    xcb_atom_t timestamp = XCB_ATOM_NONE;
    xcb_atom_t saveTargets = XCB_ATOM_NONE;
    xcb_atom_t atomPair = XCB_ATOM_NONE;
    xcb_atom_t incr = XCB_ATOM_NONE;
    xcb_atom_t null = XCB_ATOM_NONE;

    // Texts.
    xcb_atom_t utf8String = XCB_ATOM_NONE;
    xcb_atom_t text = XCB_ATOM_NONE;
    xcb_atom_t plainText = XCB_ATOM_NONE;
    xcb_atom_t plainTextUtf8 = XCB_ATOM_NONE;
    xcb_atom_t html = XCB_ATOM_NONE;

    // Lists of files, as file managers offer them.
    xcb_atom_t uriList = XCB_ATOM_NONE;
    xcb_atom_t gnomeCopiedFiles = XCB_ATOM_NONE;
    xcb_atom_t mateCopiedFiles = XCB_ATOM_NONE;
    xcb_atom_t kdeCutSelection = XCB_ATOM_NONE;

    /// The property of our own windows through which answers and timestamps arrive.
    xcb_atom_t exchange = XCB_ATOM_NONE;
};

} // namespace platform
