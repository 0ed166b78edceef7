#include "tests/Desktop/PreferencesTest.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <sstream>

namespace program_test {

using nlohmann::json;
using testing_support::ChildProcess;
using testing_support::waitUntil;

void PreferencesTest::startReadableProgram() {
    startProgram({{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}});
}

void PreferencesTest::openPreferences() {
    activate("preferences");
    awaitPreferences();
}

void PreferencesTest::awaitPreferences() {
    ASSERT_TRUE(waitForPreferencesInFront()) << program_->standardError();
    ASSERT_TRUE(waitUntilShown("Keyboard Shortcut")) << program_->standardError();
}

std::vector<json> PreferencesTest::read() {
    ChildProcess reader({PASTEWISE_WINDOW_READER, std::to_string(program_->id())},
                        {.environment = session_.environment()});
    std::vector<json> things;
    if (reader.waitForExit() == 0) {
        std::istringstream lines(reader.standardOutput());
        for (std::string line; std::getline(lines, line);) {
            things.push_back(json::parse(line));
        }
    }
    return things;
}

std::vector<std::string> PreferencesTest::names() {
    std::vector<std::string> names;
    for (const json& thing : read()) {
        names.push_back(thing.at("name"));
    }
    return names;
}

bool PreferencesTest::isShown(std::string_view name) {
    const auto all = names();
    return std::find(all.begin(), all.end(), name) != all.end();
}

bool PreferencesTest::waitUntilShown(std::string_view name) {
    return waitUntil([&] { return isShown(name); });
}

std::string PreferencesTest::focusedName() {
    for (const json& thing : read()) {
        if (thing.at("focused").get<bool>() && !thing.at("name").get<std::string>().empty()) {
            return thing.at("name");
        }
    }
    return {};
}

void PreferencesTest::focus(const std::string& button) {
    constexpr int maxTabs = 6;
    for (int i = 0; i < maxTabs && focusedName() != button; ++i) {
        const std::string before = focusedName();
        keyboard_.tap(KEY_TAB);
        waitUntil([&] { return focusedName() != before; }, std::chrono::seconds(2));
    }
    ASSERT_EQ(focusedName(), button);
}

void PreferencesTest::pressByKeyboard(const std::string& button) {
    ASSERT_NO_FATAL_FAILURE(focus(button));
    keyboard_.tap(KEY_SPACE);
}

void PreferencesTest::click(const std::string& button) {
    for (const json& thing : read()) {
        if (thing.at("name") == button) {
            const int width = thing.at("width");
            const int height = thing.at("height");
            clickAt(thing.at("x").get<int>() + width / 2, thing.at("y").get<int>() + height / 2);
            return;
        }
    }
    ADD_FAILURE() << "no button " << button;
}

void PreferencesTest::startRecording() {
    pressByKeyboard("Record Shortcut");
    ASSERT_TRUE(waitUntilShown(recordingStatus));
}

void PreferencesTest::closePreferences() {
    keyboard_.tapTogether({KEY_LEFTALT, KEY_F4});
    ASSERT_TRUE(waitUntil([this] { return preferencesWindowCount() == 0; }));
}

} // namespace program_test
