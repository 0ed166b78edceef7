#include "tests/Desktop/TrayTest.h"

namespace program_test {

using nlohmann::json;
using testing_support::waitUntil;

namespace {

/// A label as it is shown: one underscore marks a key, two are one.
std::string shown(const std::string& label) {
    std::string text;
    for (std::size_t i = 0; i < label.size(); ++i) {
        if (label[i] == '_' && ++i == label.size()) {
            break;
        }
        text += label[i];
    }
    return text;
}

} // namespace

void TrayTest::startTray(const std::vector<std::string>& arguments) {
    tray_ = std::make_unique<tray_test::TrayHostProgram>(session_.environment(), arguments);
}

void TrayTest::startProgramInTray(const std::map<std::string, std::string>& environment) {
    startTray();
    startProgram(environment);
    ASSERT_TRUE(waitForIcons(1)) << program_->standardError();
}

json TrayTest::ask(const std::string& command) {
    const std::string event = command.substr(0, command.find(' '));
    const std::size_t before = tray_->count(event);
    tray_->send(command);
    if (!waitForTrayEvents(event, before + 1)) {
        ADD_FAILURE() << "the tray does not answer: " << command;
        return {};
    }
    json answer = tray_->last(event);
    EXPECT_FALSE(answer.contains("error")) << command << ": " << answer;
    return answer;
}

bool TrayTest::waitForTrayEvents(const std::string& event, std::size_t count) {
    return waitUntil([&] { return tray_->count(event) >= count; });
}

std::vector<json> TrayTest::icons() {
    std::vector<json> changes;
    for (json& icon : tray_->all("icon")) {
        if (changes.empty() || changes.back().at("digest") != icon.at("digest")) {
            changes.push_back(std::move(icon));
        }
    }
    return changes;
}

bool TrayTest::waitForIcons(std::size_t count) {
    return waitUntil([&] { return icons().size() >= count; });
}

std::vector<TrayTest::Row> TrayTest::openMenu() {
    std::vector<Row> rows;
    const json menu = ask("menu");
    for (const json& row : menu.at("rows")) {
        Row seen{.title = shown(row.at("label")),
                 .isEnabled = row.at("enabled"),
                 .isSeparator = row.at("type") == "separator"};
        if (row.contains("shortcut")) {
            EXPECT_EQ(row.at("shortcut").size(), 1U);
            seen.keys = row.at("shortcut").at(0).get<std::vector<std::string>>();
        }
        rows.push_back(std::move(seen));
    }
    ask("closed");
    return rows;
}

std::vector<std::string> TrayTest::titles() {
    std::vector<std::string> titles;
    const json layout = ask("layout");
    for (const json& row : layout.at("rows")) {
        titles.push_back(shown(row.at("label")));
    }
    return titles;
}

bool TrayTest::waitForTitle(std::size_t row, const std::string& title) {
    return waitUntil([&] { return titles().at(row) == title; });
}

void TrayTest::choose(const std::string& title) {
    ask("choose " + title);
}

} // namespace program_test
