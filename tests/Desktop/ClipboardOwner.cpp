// A clipboard owner with contents in several formats, or with one kind of misbehaviour.
//
//   pastewise_clipboard_owner MODE [OPTION VALUE]...
//
// It takes the selection of the server in DISPLAY, prints "ready", and serves until it is killed.
// Meanwhile it prints, a line each: "asked TARGET" for every request, "answered TARGET" after a
// late answer, "served" at the end of a transfer in pieces, and "lost" when another program takes
// over.
//
// Contents:
//   normal        text as UTF8_STRING, text/plain;charset=utf-8, text/plain and STRING; text/html;
//                 and the custom form application/x-pastewise-test
//   latin1        "caf\xE9" as STRING alone
//   plain         the text as text/plain alone
//   plain-latin1  "caf\xE9" as text/plain alone
//   text-utf8     the text as TEXT alone, in UTF-8
//   text-latin1   "caf\xE9" as TEXT alone, in Latin-1
//   empty         as normal, with an empty text
//   ill-formed    as normal, with bytes that are not UTF-8: "a\xFF\xC3(b"
//   bom           as normal, with a text that begins with U+FEFF
//   image         image/png alone
//   spreadsheet   as normal, and image/png
//   files         a file manager's copy: x-special/gnome-copied-files, text/uri-list and text
//   file-uris     text/uri-list of files, and text
//   link          text/uri-list of a web address, and text
//   no-targets    text as UTF8_STRING and STRING, but TARGETS is refused
//
// Misbehaviour, with the contents of normal:
//   refuse        refuses every request
//   refuse-text   lists its targets and refuses all others
//   hang          never answers
//   hang-text     lists its targets and never answers any other request
//   flood         never answers, and sends the reader an endless stream of events instead
//   flood-pieces  announces pieces and sends their events, but no piece
//   late          answers each request after --delay
//   late-text     lists its targets at once and answers each other request after --delay
//   wrong-format  sends texts in items of 32 bits
//   stall         sends in pieces and stops after half of the text
//   slow          sends in pieces, each after --delay
//   endless       sends pieces endlessly
//   mixed         sends in pieces, of which the second is of another type
//   die           sends in pieces and exits after half of the text
//   change        sends in pieces and makes another window the owner after half of the text
//   manager-hang  owns CLIPBOARD_MANAGER instead and never answers
//   manager-refuse  owns CLIPBOARD_MANAGER instead and refuses to save anything
//   manager-late  as manager-refuse, each time after --delay
//
// Options:
//   --text TEXT       the text ("milk\nbread"); "-" reads it from standard input
//   --html HTML       the HTML ("<b>milk</b>")
//   --size BYTES      a generated text of that size
//   --chunk BYTES     sends longer texts in pieces of that size; without it only the modes above
//                     send in pieces, of 4 bytes
//   --delay MS        100 by default
//   --hint BYTES      the size announced for a transfer in pieces, instead of the true one
//   --selection NAME  instead of CLIPBOARD

#include "tests/Desktop/GeneratedText.h"
#include "tests/Desktop/XcbClient.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using testing_support::Reply;
using testing_support::XcbClient;

constexpr std::size_t defaultChunk = 4;

struct Settings {
    std::string mode;
    std::string text = "milk\nbread";
    std::string html = "<b>milk</b>";
    std::size_t chunk = 0;
    std::chrono::milliseconds delay{100};
    std::optional<std::uint32_t> hint;
    std::string selection = "CLIPBOARD";
};

void say(std::string_view line) {
    std::cout << line << std::endl; // NOLINT(performance-avoid-endl): the reader waits on a pipe.
}

std::optional<Settings> settingsFrom(const std::vector<std::string>& arguments) {
    if (arguments.size() % 2 == 0) {
        return std::nullopt;
    }
    Settings settings;
    settings.mode = arguments.front();
    for (std::size_t i = 1; i < arguments.size(); i += 2) {
        const std::string& option = arguments[i];
        const std::string& value = arguments[i + 1];
        if (option == "--text") {
            settings.text =
                value == "-" ? std::string(std::istreambuf_iterator<char>(std::cin), {}) : value;
        } else if (option == "--html") {
            settings.html = value;
        } else if (option == "--size") {
            settings.text = testing_support::generatedText(std::stoull(value));
        } else if (option == "--chunk") {
            settings.chunk = std::stoull(value);
        } else if (option == "--delay") {
            settings.delay = std::chrono::milliseconds(std::stoll(value));
        } else if (option == "--hint") {
            settings.hint = static_cast<std::uint32_t>(std::stoull(value));
        } else if (option == "--selection") {
            settings.selection = value;
        } else {
            return std::nullopt;
        }
    }
    if (settings.mode == "empty") {
        settings.text.clear();
    } else if (settings.mode == "ill-formed") {
        settings.text = "a\xFF\xC3(b";
    } else if (settings.mode == "bom") {
        settings.text = "\xEF\xBB\xBFmilk";
    } else if (settings.mode.starts_with("manager-")) {
        settings.selection = "CLIPBOARD_MANAGER";
    }
    constexpr std::array inPieces{
        "flood-pieces", "stall", "slow", "endless", "mixed", "die", "change"};
    if (settings.chunk == 0 && std::count(inPieces.begin(), inPieces.end(), settings.mode) != 0) {
        settings.chunk = defaultChunk;
    }
    return settings;
}

/// The contents: bytes by target name.
std::map<std::string, std::string> contentsFor(const Settings& settings) {
    const std::string& mode = settings.mode;
    const std::string png = "\x89PNG\r\n\x1A\nnot really a picture";
    if (mode == "latin1") {
        return {{"STRING", "caf\xE9"}};
    }
    if (mode == "plain") {
        return {{"text/plain", settings.text}};
    }
    if (mode == "plain-latin1") {
        return {{"text/plain", "caf\xE9"}};
    }
    if (mode == "text-utf8" || mode == "text-latin1") {
        return {{"TEXT", mode == "text-utf8" ? settings.text : "caf\xE9"}};
    }
    if (mode == "image") {
        return {{"image/png", png}};
    }
    std::map<std::string, std::string> contents{{"UTF8_STRING", settings.text},
                                                {"STRING", settings.text}};
    if (mode == "no-targets") {
        return contents;
    }
    contents["text/plain;charset=utf-8"] = settings.text;
    contents["text/plain"] = settings.text;
    if (mode == "files" || mode == "file-uris") {
        contents["text/uri-list"] = "# files\r\nfile:///home/user/list.txt\r\n";
    }
    if (mode == "files") {
        contents["x-special/gnome-copied-files"] = "copy\nfile:///home/user/list.txt";
    }
    if (mode == "link") {
        contents["text/uri-list"] = "https://example.org/\r\n";
    }
    if (mode == "spreadsheet") {
        contents["image/png"] = png;
    }
    if (mode != "files" && mode != "file-uris") {
        contents["text/html"] = settings.html;
        contents["application/x-pastewise-test"] = "custom";
    }
    return contents;
}

class Owner {
  public:
    explicit Owner(Settings settings)
        : settings_(std::move(settings)), contents_(contentsFor(settings_)) {}

    [[nodiscard]] bool take() {
        const xcb_atom_t selection = client_.atom(settings_.selection);
        since_ = client_.time();
        xcb_set_selection_owner(client_.connection(), client_.window(), selection, since_);
        const Reply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(client_.connection(),
                                          xcb_get_selection_owner(client_.connection(), selection),
                                          nullptr));
        return reply && reply->owner == client_.window();
    }

    [[noreturn]] void serve() {
        while (true) {
            std::optional<std::chrono::milliseconds> limit;
            if (!later_.empty()) {
                limit = std::max(std::chrono::milliseconds(1),
                                 std::chrono::ceil<std::chrono::milliseconds>(
                                     later_.begin()->first - Clock::now()));
            }
            if (const auto event = client_.event(limit)) {
                handle(*event);
            }
            while (!later_.empty() && later_.begin()->first <= Clock::now()) {
                const auto due = later_.extract(later_.begin());
                due.mapped()();
            }
        }
    }

  private:
    using Place = std::pair<xcb_window_t, xcb_atom_t>;

    struct Transfer {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::string bytes;
        std::size_t sentCount = 0;
    };

    void handle(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7F) {
        case XCB_SELECTION_CLEAR:
            say("lost");
            break;
        case XCB_SELECTION_REQUEST: {
            const auto request = *reinterpret_cast<const xcb_selection_request_event_t*>(&event);
            const std::string target = client_.name(request.target);
            say("asked " + target);
            if (settings_.mode == "late" || settings_.mode == "manager-late" ||
                (settings_.mode == "late-text" && target != "TARGETS")) {
                inAWhile([this, request, target] {
                    answer(request);
                    say("answered " + target);
                });
            } else {
                answer(request);
            }
            break;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto& notify = *reinterpret_cast<const xcb_property_notify_event_t*>(&event);
            const Place place{notify.window, notify.atom};
            if (notify.state == XCB_PROPERTY_DELETE && transfers_.contains(place)) {
                if (settings_.mode == "slow") {
                    inAWhile([this, place] { sendPiece(place); });
                } else {
                    sendPiece(place);
                }
            }
            break;
        }
        default:
            break;
        }
    }

    void inAWhile(std::function<void()> work) {
        later_.emplace(Clock::now() + settings_.delay, std::move(work));
    }

    void answer(const xcb_selection_request_event_t& request) {
        const std::string target = client_.name(request.target);
        const bool isList = target == "TARGETS";
        const std::string& mode = settings_.mode;
        if (mode == "hang" || mode == "manager-hang" || (mode == "hang-text" && !isList)) {
            return;
        }
        if (mode == "flood") {
            flood(request);
        }
        bool isGiven = false;
        if (mode == "refuse" || (mode == "refuse-text" && !isList) ||
            (mode == "no-targets" && isList)) {
            isGiven = false;
        } else if (isList) {
            std::vector<xcb_atom_t> targets{client_.atom("TARGETS"), client_.atom("TIMESTAMP")};
            for (const auto& [name, bytes] : contents_) {
                targets.push_back(client_.atom(name));
            }
            put(request, XCB_ATOM_ATOM, 32, targets.size(), targets.data());
            isGiven = true;
        } else if (target == "TIMESTAMP") {
            put(request, XCB_ATOM_INTEGER, 32, 1, &since_);
            isGiven = true;
        } else if (contents_.contains(target)) {
            give(request, contents_.at(target));
            isGiven = true;
        }
        notify(request, isGiven);
        if (mode == "flood-pieces" && !isList) {
            flood(request);
        }
    }

    /// Notifies the requestor endlessly of changes of its property.
    [[noreturn]] void flood(const xcb_selection_request_event_t& request) {
        xcb_property_notify_event_t notify{};
        notify.response_type = XCB_PROPERTY_NOTIFY;
        notify.window = request.requestor;
        notify.atom = request.property;
        notify.time = request.time;
        notify.state = XCB_PROPERTY_NEW_VALUE;
        while (xcb_connection_has_error(client_.connection()) == 0) {
            send(request.requestor, notify);
        }
        _exit(1);
    }

    /// The type of an answer: TEXT is answered in an encoding of the owner's choice.
    xcb_atom_t typeOf(xcb_atom_t target) {
        if (settings_.mode == "text-latin1") {
            return XCB_ATOM_STRING;
        }
        return settings_.mode == "text-utf8" ? client_.atom("UTF8_STRING") : target;
    }

    void give(const xcb_selection_request_event_t& request, const std::string& bytes) {
        if (settings_.mode == "wrong-format") {
            const std::vector<std::uint32_t> items(bytes.begin(), bytes.end());
            put(request, request.target, 32, items.size(), items.data());
        } else if (settings_.chunk == 0 || bytes.size() <= settings_.chunk) {
            put(request, typeOf(request.target), 8, bytes.size(), bytes.data());
        } else {
            const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(
                client_.connection(), request.requestor, XCB_CW_EVENT_MASK, &mask);
            const std::uint32_t size =
                settings_.hint.value_or(static_cast<std::uint32_t>(bytes.size()));
            transfers_[{request.requestor, request.property}] = {request.target, bytes};
            put(request, client_.atom("INCR"), 32, 1, &size);
        }
    }

    void put(const xcb_selection_request_event_t& request,
             xcb_atom_t type,
             std::uint8_t format,
             std::size_t count,
             const void* items) {
        xcb_change_property(client_.connection(),
                            XCB_PROP_MODE_REPLACE,
                            request.requestor,
                            request.property,
                            type,
                            format,
                            static_cast<std::uint32_t>(count),
                            items);
    }

    void notify(const xcb_selection_request_event_t& request, bool isGiven) {
        xcb_selection_notify_event_t notify{};
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.time = request.time;
        notify.requestor = request.requestor;
        notify.selection = request.selection;
        notify.target = request.target;
        notify.property = isGiven ? request.property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
        send(request.requestor, notify);
        xcb_flush(client_.connection());
    }

    template <typename Event>
    void send(xcb_window_t window, const Event& event) {
        std::array<char, 32> wire{};
        std::memcpy(wire.data(), &event, sizeof event);
        xcb_send_event(client_.connection(), 0, window, 0, wire.data());
    }

    void sendPiece(const Place& place) {
        Transfer& transfer = transfers_.at(place);
        const std::string& mode = settings_.mode;
        if (mode == "endless" && transfer.sentCount >= transfer.bytes.size()) {
            transfer.sentCount = 0;
        }
        if (transfer.sentCount >= transfer.bytes.size() / 2) {
            if (mode == "stall") {
                return;
            }
            if (mode == "die") {
                _exit(0);
            }
            if (mode == "change") {
                xcb_set_selection_owner(client_.connection(),
                                        client_.makeWindow(),
                                        client_.atom(settings_.selection),
                                        client_.time());
                transfers_.erase(place);
                return;
            }
        }
        const std::string_view piece =
            std::string_view(transfer.bytes).substr(transfer.sentCount, settings_.chunk);
        const bool isOfAnotherType = mode == "mixed" && transfer.sentCount == settings_.chunk;
        xcb_change_property(client_.connection(),
                            XCB_PROP_MODE_REPLACE,
                            place.first,
                            place.second,
                            isOfAnotherType ? client_.atom("text/x-other") : transfer.type,
                            8,
                            static_cast<std::uint32_t>(piece.size()),
                            piece.data());
        xcb_flush(client_.connection());
        transfer.sentCount += piece.size();
        if (piece.empty()) {
            say("served");
            transfers_.erase(place);
        }
    }

    Settings settings_;
    std::map<std::string, std::string> contents_;
    XcbClient client_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::map<Place, Transfer> transfers_;
    std::multimap<Clock::time_point, std::function<void()>> later_;
};

} // namespace

int main(int argumentCount, char** arguments) {
    const auto settings =
        settingsFrom(std::vector<std::string>(arguments + 1, arguments + argumentCount));
    if (!settings) {
        std::cerr << "usage: pastewise_clipboard_owner MODE [OPTION VALUE]...\n";
        return 2;
    }
    Owner owner(*settings);
    if (!owner.take()) {
        std::cerr << "the selection cannot be taken\n";
        return 1;
    }
    say("ready");
    owner.serve();
}
