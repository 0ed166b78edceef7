// Reads the clipboard as other programs do.
//
//   pastewise_clipboard_reader get TARGET [OPTION VALUE]...
//       writes the received bytes to standard output
//   pastewise_clipboard_reader targets [OPTION VALUE]...
//       writes the names of the offered targets, a line each
//   pastewise_clipboard_reader multiple TARGET,TARGET... [OPTION VALUE]...
//       asks for all in one request and writes for each, in that order, a line "TARGET SIZE", the
//       bytes and a line feed, or a line "TARGET refused"
//   pastewise_clipboard_reader changes [OPTION VALUE]...
//       prints "ready", then until it is killed "change N: TARGET TARGET..." for every change of
//       ownership, with the targets that the new owner offers at once
//
// It uses the server in DISPLAY. Exit codes: 0 received, 1 refused, 2 timed out, 3 no server,
// 4 wrong usage.
//
// Options:
//   --timeout MS        the longest time without progress (10000)
//   --stop-after BYTES  (get) pauses a transfer in pieces once it has that many, prints "stopped"
//                       on standard error and resumes at SIGUSR1
//   --property none     (get) names no property in the request, as obsolete clients do
//   --time T            the request's time: "now", "current" for the constant, or a number
//   --selection NAME    instead of CLIPBOARD

#include "tests/Desktop/XcbClient.h"

#include <xcb/xfixes.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using testing_support::Reply;
using testing_support::XcbClient;

constexpr int refusedCode = 1;
constexpr int silentCode = 2;
constexpr int usageCode = 4;

struct Settings {
    std::string command;
    std::string target;
    std::chrono::milliseconds timeout{10'000};
    std::size_t stopAfter = std::numeric_limits<std::size_t>::max();
    bool namesProperty = true;
    std::string time = "now";
    std::string selection = "CLIPBOARD";
};

std::optional<Settings> settingsFrom(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        return std::nullopt;
    }
    Settings settings;
    settings.command = arguments.front();
    std::size_t next = 1;
    if (settings.command == "get" || settings.command == "multiple") {
        if (arguments.size() < 2) {
            return std::nullopt;
        }
        settings.target = arguments[next++];
    } else if (settings.command != "targets" && settings.command != "changes") {
        return std::nullopt;
    }
    if ((arguments.size() - next) % 2 != 0) {
        return std::nullopt;
    }
    for (; next < arguments.size(); next += 2) {
        const std::string& option = arguments[next];
        const std::string& value = arguments[next + 1];
        if (option == "--timeout") {
            settings.timeout = std::chrono::milliseconds(std::stoll(value));
        } else if (option == "--stop-after") {
            settings.stopAfter = std::stoull(value);
        } else if (option == "--property" && value == "none") {
            settings.namesProperty = false;
        } else if (option == "--time") {
            settings.time = value;
        } else if (option == "--selection") {
            settings.selection = value;
        } else {
            return std::nullopt;
        }
    }
    return settings;
}

struct Property {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::string bytes;
};

class Reader {
  public:
    explicit Reader(Settings settings) : settings_(std::move(settings)) {
        sigemptyset(&goingOn_);
        sigaddset(&goingOn_, SIGUSR1);
        sigprocmask(SIG_BLOCK, &goingOn_, nullptr);
    }

    int run() {
        if (settings_.command == "get") {
            return get(settings_.target);
        }
        if (settings_.command == "targets") {
            const int code = ask("TARGETS");
            for (const std::string& name : targetNames()) {
                std::cout << name << '\n';
            }
            return code;
        }
        if (settings_.command == "multiple") {
            return getMultiple();
        }
        watchChanges();
    }

  private:
    /// Sends one request and waits for the answer, whose property received_ then holds.
    int ask(const std::string& target) {
        received_ = {};
        const xcb_atom_t targetAtom = client_.atom(target);
        property_ = settings_.namesProperty ? client_.atom("READER_" + target) : targetAtom;
        convert(targetAtom,
                settings_.namesProperty ? property_ : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
        const auto code = awaitNotify(targetAtom);
        if (code != 0) {
            return code;
        }
        received_ = take(property_);
        return 0;
    }

    int get(const std::string& target) {
        const int code = ask(target);
        if (code != 0) {
            return code;
        }
        if (received_.type != client_.atom("INCR")) {
            std::cout << received_.bytes << std::flush;
            return 0;
        }
        const auto text = takePieces(property_);
        if (!text) {
            return silentCode;
        }
        std::cout << *text << std::flush;
        return 0;
    }

    int getMultiple() {
        std::vector<std::string> targets;
        std::string_view rest = settings_.target;
        while (!rest.empty()) {
            const std::size_t comma = rest.find(',');
            targets.emplace_back(rest.substr(0, comma));
            rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
        }
        std::vector<xcb_atom_t> pairs;
        for (const std::string& target : targets) {
            pairs.push_back(client_.atom(target));
            pairs.push_back(client_.atom("READER_" + target));
        }
        const xcb_atom_t list = client_.atom("READER_LIST");
        xcb_change_property(client_.connection(),
                            XCB_PROP_MODE_REPLACE,
                            client_.window(),
                            list,
                            client_.atom("ATOM_PAIR"),
                            32,
                            static_cast<std::uint32_t>(pairs.size()),
                            pairs.data());
        convert(client_.atom("MULTIPLE"), list);
        const int code = awaitNotify(client_.atom("MULTIPLE"));
        if (code != 0) {
            return code;
        }
        const Property answer = take(list);
        if (answer.bytes.size() != pairs.size() * sizeof(xcb_atom_t)) {
            return refusedCode;
        }
        std::memcpy(pairs.data(), answer.bytes.data(), answer.bytes.size());
        for (std::size_t i = 0; i < targets.size(); ++i) {
            const xcb_atom_t property = pairs[2 * i + 1];
            if (property == XCB_ATOM_NONE) {
                std::cout << targets[i] << " refused\n";
                continue;
            }
            Property part = take(property);
            if (part.type == client_.atom("INCR")) {
                auto text = takePieces(property);
                if (!text) {
                    return silentCode;
                }
                part.bytes = std::move(*text);
            }
            std::cout << targets[i] << ' ' << part.bytes.size() << '\n' << part.bytes << '\n';
        }
        std::cout << std::flush;
        return 0;
    }

    [[noreturn]] void watchChanges() {
        const Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
            client_.connection(),
            xcb_xfixes_query_version(
                client_.connection(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
            nullptr));
        const auto* extension = xcb_get_extension_data(client_.connection(), &xcb_xfixes_id);
        xcb_xfixes_select_selection_input(client_.connection(),
                                          client_.window(),
                                          client_.atom(settings_.selection),
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
        // The reply shows that the server has processed the request above.
        static_cast<void>(client_.time());
        std::cout << "ready" << std::endl; // NOLINT(performance-avoid-endl)
        changeEvent_ = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
        int reportedCount = 0;
        while (true) {
            while (reportedCount == changeCount_) {
                static_cast<void>(nextEvent(std::nullopt));
            }
            ++reportedCount;
            const int code = ask("TARGETS");
            std::cout << "change " << reportedCount << ':';
            if (code == 0) {
                for (const std::string& name : targetNames()) {
                    std::cout << ' ' << name;
                }
            }
            std::cout << std::endl; // NOLINT(performance-avoid-endl)
        }
    }

    void convert(xcb_atom_t target, xcb_atom_t property) {
        xcb_timestamp_t time = XCB_CURRENT_TIME;
        if (settings_.time == "now") {
            time = client_.time();
        } else if (settings_.time != "current") {
            time = static_cast<xcb_timestamp_t>(std::stoul(settings_.time));
        }
        xcb_convert_selection(client_.connection(),
                              client_.window(),
                              client_.atom(settings_.selection),
                              target,
                              property,
                              time);
    }

    Reply<xcb_generic_event_t> nextEvent(std::optional<std::chrono::milliseconds> limit) {
        auto event = client_.event(limit);
        if (event && (event->response_type & 0x7F) == changeEvent_) {
            ++changeCount_;
        }
        return event;
    }

    int awaitNotify(xcb_atom_t target) {
        while (const auto event = nextEvent(settings_.timeout)) {
            const auto* notify = reinterpret_cast<const xcb_selection_notify_event_t*>(event.get());
            if ((event->response_type & 0x7F) == XCB_SELECTION_NOTIFY && notify->target == target) {
                return notify->property == XCB_ATOM_NONE ? refusedCode : 0;
            }
        }
        return silentCode;
    }

    /// Reads and deletes a property of our window.
    Property take(xcb_atom_t property) {
        const Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(client_.connection(),
                                   xcb_get_property(client_.connection(),
                                                    1,
                                                    client_.window(),
                                                    property,
                                                    XCB_GET_PROPERTY_TYPE_ANY,
                                                    0,
                                                    std::numeric_limits<std::int32_t>::max() / 4),
                                   nullptr));
        if (!reply) {
            return {};
        }
        return {reply->type,
                std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                            static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))};
    }

    std::optional<std::string> takePieces(xcb_atom_t property) {
        std::string text;
        while (const auto event = nextEvent(settings_.timeout)) {
            const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY || notify->atom != property ||
                notify->state != XCB_PROPERTY_NEW_VALUE) {
                continue;
            }
            if (text.size() >= settings_.stopAfter) {
                std::cerr << "stopped" << std::endl; // NOLINT(performance-avoid-endl)
                int signal = 0;
                sigwait(&goingOn_, &signal);
                settings_.stopAfter = std::numeric_limits<std::size_t>::max();
            }
            const Property piece = take(property);
            if (piece.type == XCB_ATOM_NONE) {
                continue;
            }
            if (piece.bytes.empty()) {
                return text;
            }
            text += piece.bytes;
        }
        return std::nullopt;
    }

    std::vector<std::string> targetNames() {
        std::vector<xcb_atom_t> atoms(received_.bytes.size() / sizeof(xcb_atom_t));
        if (!atoms.empty()) {
            std::memcpy(atoms.data(), received_.bytes.data(), atoms.size() * sizeof(xcb_atom_t));
        }
        std::vector<std::string> names;
        names.reserve(atoms.size());
        for (const xcb_atom_t atom : atoms) {
            names.push_back(client_.name(atom));
        }
        return names;
    }

    Settings settings_;
    XcbClient client_;
    xcb_atom_t property_ = XCB_ATOM_NONE;
    Property received_;
    int changeEvent_ = -1;
    int changeCount_ = 0;
    sigset_t goingOn_{};
};

} // namespace

int main(int argumentCount, char** arguments) {
    const auto settings =
        settingsFrom(std::vector<std::string>(arguments + 1, arguments + argumentCount));
    if (!settings) {
        std::cerr << "usage: pastewise_clipboard_reader get|targets|multiple|changes ...\n";
        return usageCode;
    }
    return Reader(*settings).run();
}
