#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path sourceFolder = PASTEWISE_SOURCE_FOLDER;

std::string contentsOf(const std::string& name) {
    std::ifstream file(sourceFolder / name);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> matches(const std::string& text, const std::string& pattern) {
    std::set<std::string> found;
    const std::regex regex(pattern);
    for (auto match = std::sregex_iterator(text.begin(), text.end(), regex);
         match != std::sregex_iterator();
         ++match) {
        found.insert((*match)[1].str());
    }
    return found;
}

class ReadmeTests : public testing::TestWithParam<std::string> {};

TEST_P(ReadmeTests, NamesOnlyCommandsThatExistAndCanBeStarted) {
    const auto commands = matches(contentsOf(GetParam()), R"((script/[a-z]+))");
    EXPECT_TRUE(commands.contains("script/run"));
    EXPECT_TRUE(commands.contains("script/test"));
    for (const std::string& command : commands) {
        const fs::path path = sourceFolder / command;
        ASSERT_TRUE(fs::exists(path)) << command;
        EXPECT_NE(fs::status(path).permissions() & fs::perms::owner_exec, fs::perms::none)
            << command;
    }
}

TEST_P(ReadmeTests, LinksOnlyToFilesThatExist) {
    for (const std::string& link : matches(contentsOf(GetParam()), R"(\]\(([^)#:]+)\))")) {
        EXPECT_TRUE(fs::exists(sourceFolder / link)) << link;
    }
}

TEST_P(ReadmeTests, NamesOnlyPresetsThatExist) {
    const auto presets = matches(contentsOf("CMakePresets.json"), R"re("name": "([a-z]+)")re");
    for (const std::string& preset : matches(contentsOf(GetParam()), R"(--preset ([a-z]+))")) {
        EXPECT_TRUE(presets.contains(preset)) << preset;
    }
}

INSTANTIATE_TEST_SUITE_P(Documents,
                         ReadmeTests,
                         testing::Values("README.md", "HACKING.md"),
                         [](const auto& signal) {
                             return signal.param.substr(0, signal.param.find('.'));
                         });

TEST(HackingTests, ListsEveryFolderThatHoldsSources) {
    const std::string text = contentsOf("HACKING.md");
    for (const auto& entry : fs::directory_iterator(sourceFolder)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && name != "build" && !name.starts_with(".")) {
            EXPECT_NE(text.find(name + "/"), std::string::npos) << name;
        }
    }
}

} // namespace
