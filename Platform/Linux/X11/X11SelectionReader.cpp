#include "Platform/Linux/X11/X11SelectionReader.h"

#include "Foundation/Interface.h"
#include "Platform/Linux/X11/Latin1.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace platform {

namespace {

using Outcome = X11SelectionRequest::Outcome;

constexpr std::uint8_t bitsPerByte = 8;
constexpr std::uint8_t bitsPerAtom = 32;

// The windows of the latest readings outlive them: an owner that answers late, or that tidies up
// after a long transfer, finds a window there. Otherwise it would get an X error, which ends a
// program that does not expect it, and what the user copied with it.
constexpr std::size_t retiredWindowLimit = 8;

// No event is of this kind.
constexpr int noExtension = -1;

bool contains(const std::vector<xcb_atom_t>& atoms, xcb_atom_t atom) {
    return std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

std::vector<xcb_atom_t> atomsOf(const X11SelectionRequest::Answer& answer) {
    const std::string_view bytes = answer.bytes.view();
    std::vector<xcb_atom_t> atoms(bytes.size() / sizeof(xcb_atom_t));
    if (!atoms.empty()) {
        std::memcpy(atoms.data(), bytes.data(), atoms.size() * sizeof(xcb_atom_t));
    }
    return atoms;
}

/// Whether the first address of a text/uri-list is that of a file.
bool beginsWithFile(std::string_view uriList) {
    while (uriList.starts_with('#')) {
        const std::size_t end = uriList.find('\n');
        uriList.remove_prefix(end == std::string_view::npos ? uriList.size() : end + 1);
    }
    constexpr std::string_view scheme = "file:";
    return uriList.size() >= scheme.size() &&
           std::equal(scheme.begin(), scheme.end(), uriList.begin(), [](char expected, char c) {
               return std::tolower(static_cast<unsigned char>(c)) == expected;
           });
}

/// A new window that hears of its own properties and of CLIPBOARD's owner for as long as this
/// object lives. The window itself stays.
class ListeningWindow : foundation::Pinned {
  public:
    ListeningWindow(const X11Connection& connection, const X11ClipboardAtoms& atoms)
        : connection_(connection), atoms_(atoms), id_(xcb_generate_id(connection.get())) {
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(connection_.get(),
                          0,
                          id_,
                          connection_.screen().root,
                          0,
                          0,
                          1,
                          1,
                          0,
                          XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT,
                          XCB_CW_EVENT_MASK,
                          &events);
        xcb_xfixes_select_selection_input(
            connection_.get(),
            id_,
            atoms_.clipboard,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }

    ~ListeningWindow() {
        const std::uint32_t noEvents = XCB_EVENT_MASK_NO_EVENT;
        xcb_change_window_attributes(connection_.get(), id_, XCB_CW_EVENT_MASK, &noEvents);
        xcb_xfixes_select_selection_input(connection_.get(), id_, atoms_.clipboard, 0);
        xcb_flush(connection_.get());
    }

    [[nodiscard]] xcb_window_t id() const { return id_; }

  private:
    const X11Connection& connection_;
    const X11ClipboardAtoms& atoms_;
    xcb_window_t id_;
};

} // namespace

X11SelectionReader::X11SelectionReader(const X11Connection& connection,
                                       X11EventQueue& events,
                                       const X11ClipboardAtoms& atoms,
                                       const X11PasteboardLimits& limits,
                                       foundation::Logger logger)
    : connection_(connection),
      events_(events),
      atoms_(atoms),
      limits_(limits),
      logger_(logger),
      firstXfixesEvent_(noExtension) {
    // The server serves this extension only to clients that have told their version.
    const XcbPointer<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection_.get(),
        xcb_xfixes_query_version(
            connection_.get(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    const auto* extension = xcb_get_extension_data(connection_.get(), &xcb_xfixes_id);
    if (version && extension != nullptr) {
        firstXfixesEvent_ = extension->first_event;
    }
}

X11SelectionReader::~X11SelectionReader() {
    for (const xcb_window_t window : retiredWindows_) {
        xcb_destroy_window(connection_.get(), window);
    }
    xcb_flush(connection_.get());
}

std::optional<foundation::TextBuffer> X11SelectionReader::read(PasteboardType type) {
    const ListeningWindow window(connection_, atoms_);
    retire(window.id());
    X11SelectionRequest request(
        connection_, events_, atoms_, limits_, window.id(), firstXfixesEvent_);
    return ask(request, type);
}

std::optional<foundation::TextBuffer> X11SelectionReader::ask(X11SelectionRequest& request,
                                                              PasteboardType type) const {
    const auto targets = request.convert(atoms_.targets);
    if (isOver(targets.outcome)) {
        return std::nullopt;
    }
    std::vector<xcb_atom_t> wanted =
        type == PasteboardType::html
            ? std::vector{atoms_.html}
            : std::vector<xcb_atom_t>{atoms_.utf8String, atoms_.plainTextUtf8, XCB_ATOM_STRING};
    const bool isListed = targets.outcome == Outcome::received && targets.format == bitsPerAtom;
    if (!isListed) {
        // Old programs own texts without being able to tell in which forms.
        std::erase(wanted, atoms_.plainTextUtf8);
        return askForFirst(request, wanted);
    }
    const std::vector<xcb_atom_t> offered = atomsOf(targets);
    std::erase_if(wanted, [&](xcb_atom_t target) { return !contains(offered, target); });
    if (wanted.empty() || !mayBeText(request, offered)) {
        return std::nullopt;
    }
    return askForFirst(request, wanted);
}

std::optional<foundation::TextBuffer>
X11SelectionReader::askForFirst(X11SelectionRequest& request,
                                const std::vector<xcb_atom_t>& targets) const {
    for (const xcb_atom_t target : targets) {
        auto answer = request.convert(target);
        if (isOver(answer.outcome)) {
            return std::nullopt;
        }
        if (answer.outcome != Outcome::received || answer.format != bitsPerByte) {
            continue;
        }
        if (target != XCB_ATOM_STRING || answer.type == atoms_.utf8String) {
            return std::move(answer.bytes);
        }
        if (answer.type == XCB_ATOM_STRING) {
            return utf8FromLatin1(answer.bytes.view());
        }
    }
    logger_.error("The owner of the clipboard refuses to hand its text over");
    return std::nullopt;
}

/// False for a list of files, and when the owner cannot be asked whether it is one.
bool X11SelectionReader::mayBeText(X11SelectionRequest& request,
                                   const std::vector<xcb_atom_t>& offered) const {
    const std::array fileFormats{
        atoms_.gnomeCopiedFiles, atoms_.mateCopiedFiles, atoms_.kdeCutSelection};
    if (std::any_of(fileFormats.begin(), fileFormats.end(), [&](xcb_atom_t format) {
            return contains(offered, format);
        })) {
        return false;
    }
    if (!contains(offered, atoms_.uriList)) {
        return true;
    }
    const auto uriList = request.convert(atoms_.uriList);
    return !isOver(uriList.outcome) &&
           (uriList.outcome != Outcome::received || !beginsWithFile(uriList.bytes.view()));
}

/// Whether there is no use in asking the owner anything else.
bool X11SelectionReader::isOver(Outcome outcome) const {
    switch (outcome) {
    case Outcome::silent:
        logger_.error("The owner of the clipboard does not answer");
        return true;
    case Outcome::ownerChanged:
        logger_.error("The clipboard changed hands while it was being read");
        return true;
    case Outcome::malformed:
        // The rest may still be on its way, and would be taken for the next answer.
        logger_.error("The owner of the clipboard does not keep to the rules of a transfer");
        return true;
    case Outcome::received:
    case Outcome::refused:
        break;
    }
    return false;
}

void X11SelectionReader::handle(const xcb_generic_event_t& event) {
    if (eventType(event) != XCB_SELECTION_NOTIFY) {
        return;
    }
    const auto& notify = eventAs<xcb_selection_notify_event_t>(event);
    if (std::find(retiredWindows_.begin(), retiredWindows_.end(), notify.requestor) ==
        retiredWindows_.end()) {
        return;
    }
    const XcbPointer<xcb_get_property_reply_t> announced(
        xcb_get_property_reply(connection_.get(),
                               xcb_get_property(connection_.get(),
                                                0,
                                                notify.requestor,
                                                atoms_.exchange,
                                                XCB_GET_PROPERTY_TYPE_ANY,
                                                0,
                                                0),
                               nullptr));
    // Deleting the announcement of a transfer in pieces would be asking for the first piece.
    if (announced && announced->type != atoms_.incr) {
        xcb_delete_property(connection_.get(), notify.requestor, atoms_.exchange);
        xcb_flush(connection_.get());
    }
}

void X11SelectionReader::retire(xcb_window_t window) {
    retiredWindows_.push_back(window);
    if (retiredWindows_.size() > retiredWindowLimit) {
        xcb_destroy_window(connection_.get(), retiredWindows_.front());
        retiredWindows_.pop_front();
    }
}

} // namespace platform
