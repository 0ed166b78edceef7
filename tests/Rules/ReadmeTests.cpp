#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path repository = PASTEWISE_SOURCE_FOLDER;

std::string contentsOf(const std::string& name) {
    std::ifstream file(repository / name);
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
    const auto commands = matches(contentsOf(GetParam()), R"((script/[a-z-]+))");
    EXPECT_TRUE(commands.contains("script/run"));
    EXPECT_TRUE(commands.contains("script/test"));
    for (const std::string& command : commands) {
        const fs::path path = repository / command;
        ASSERT_TRUE(fs::exists(path)) << command;
        EXPECT_NE(fs::status(path).permissions() & fs::perms::owner_exec, fs::perms::none)
            << command;
    }
}

TEST_P(ReadmeTests, LinksOnlyToFilesThatExist) {
    const auto links = matches(contentsOf(GetParam()), R"(\]\(([^)#:]+)\))");
    if (GetParam() == "README.md") {
        EXPECT_TRUE(links.contains("HACKING.md"));
    }
    for (const std::string& link : links) {
        EXPECT_TRUE(fs::exists(repository / link)) << link;
    }
}

INSTANTIATE_TEST_SUITE_P(Documents,
                         ReadmeTests,
                         testing::Values("README.md", "HACKING.md"),
                         [](const auto& document) {
                             return document.param.substr(0, document.param.find('.'));
                         });

TEST(HackingTests, ListsThePresetsThatExistAndNoOthers) {
    auto presets = matches(contentsOf("CMakePresets.json"), R"re("name": "([a-z]+)")re");
    presets.erase("base"); // Hidden: the others inherit from it.
    const std::string text = contentsOf("HACKING.md");
    const std::size_t start = text.find("The CMake presets behind them:");
    ASSERT_NE(start, std::string::npos);
    const auto listed = matches(text.substr(start, text.find('.', start) - start), "`([a-z]+)`");
    EXPECT_FALSE(listed.empty());
    EXPECT_EQ(listed, presets);
}

TEST(HackingTests, ListsEveryFolderThatHoldsSources) {
    const std::string text = contentsOf("HACKING.md");
    for (const auto& entry : fs::directory_iterator(repository)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && name != "build" && !name.starts_with(".")) {
            EXPECT_NE(text.find(name + "/"), std::string::npos) << name;
        }
    }
}

} // namespace
