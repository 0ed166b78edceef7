#include "tests/Platform/Linux/Tray/TrayHostProgram.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tray_test {

namespace {

std::vector<std::string> command(const std::vector<std::string>& options) {
    std::vector<std::string> command{PASTEWISE_TRAY_HOST};
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

} // namespace

TrayHostProgram::TrayHostProgram(const std::map<std::string, std::string>& environment,
                                 const std::vector<std::string>& options)
    : program_(command(options), {.environment = environment, .keepsInputOpen = true}) {
    if (!program_.waitForOutput("\"ready\"")) {
        throw std::runtime_error("no tray host: " + program_.standardError());
    }
}

std::size_t TrayHostProgram::count(const std::string& event) {
    parse();
    return static_cast<std::size_t>(std::count_if(
        events_.begin(), events_.end(), [&](const auto& one) { return one["event"] == event; }));
}

nlohmann::json TrayHostProgram::last(const std::string& event) {
    parse();
    const auto found = std::find_if(
        events_.rbegin(), events_.rend(), [&](const auto& one) { return one["event"] == event; });
    return found == events_.rend() ? nlohmann::json() : *found;
}

std::vector<nlohmann::json> TrayHostProgram::all(const std::string& event) {
    parse();
    std::vector<nlohmann::json> found;
    std::copy_if(events_.begin(), events_.end(), std::back_inserter(found), [&](const auto& one) {
        return one["event"] == event;
    });
    return found;
}

bool TrayHostProgram::showsIcon() {
    parse();
    bool hasIcon = false;
    for (const auto& event : events_) {
        if (event["event"] == "icon") {
            hasIcon = event.contains("sizes") && !event["sizes"].empty();
        } else if (event["event"] == "unregistered") {
            hasIcon = false;
        }
    }
    return hasIcon;
}

void TrayHostProgram::parse() {
    const std::string& output = program_.standardOutput();
    for (std::size_t end = output.find('\n', parsedLength_); end != std::string::npos;
         end = output.find('\n', parsedLength_)) {
        events_.push_back(nlohmann::json::parse(output.substr(parsedLength_, end - parsedLength_)));
        parsedLength_ = end + 1;
    }
}

} // namespace tray_test
