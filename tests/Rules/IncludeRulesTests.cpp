#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path sourceFolder = PASTEWISE_SOURCE_FOLDER;

struct Include {
    std::string file;
    std::string target;
    bool isQuoted;
};

/// Every include of the C++ files below `folder`, a path in the source folder.
std::vector<Include> includesBelow(const std::string& folder, bool recursive = true) {
    static const std::regex pattern(R"(^\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"])");
    std::vector<Include> includes;
    for (auto entry = fs::recursive_directory_iterator(sourceFolder / folder);
         entry != fs::recursive_directory_iterator();
         ++entry) {
        if (!recursive) {
            entry.disable_recursion_pending();
        }
        const fs::path extension = entry->path().extension();
        if (extension != ".h" && extension != ".cpp" && extension != ".mm") {
            continue;
        }
        std::ifstream file(entry->path());
        std::string line;
        std::smatch match;
        while (std::getline(file, line)) {
            if (std::regex_search(line, match, pattern)) {
                includes.push_back({fs::relative(entry->path(), sourceFolder).string(),
                                    match[2].str(),
                                    match[1].str() == "\""});
            }
        }
    }
    return includes;
}

bool isStandardHeader(const std::string& name) {
    static const std::regex pattern("[a-z_0-9]+");
    return std::regex_match(name, pattern);
}

/// Expects that the files below `folder` include the standard library, the project's `folders`
/// (path prefixes) and the system headers in `libraries`, and nothing else.
void expectOnly(const std::string& folder,
                const std::set<std::string>& folders,
                const std::set<std::string>& libraries = {},
                bool recursive = true) {
    const auto includes = includesBelow(folder, recursive);
    EXPECT_FALSE(includes.empty()) << folder << " holds no source";
    for (const Include& include : includes) {
        if (include.isQuoted) {
            const bool isAllowed =
                std::any_of(folders.begin(), folders.end(), [&](const auto& prefix) {
                    return include.target.starts_with(prefix);
                });
            EXPECT_TRUE(isAllowed) << include.file << " includes " << include.target;
        } else {
            EXPECT_TRUE(isStandardHeader(include.target) || libraries.contains(include.target))
                << include.file << " includes " << include.target;
        }
    }
}

TEST(IncludeRulesTests, FoundationLeansOnTheStandardLibraryAlone) {
    expectOnly("Foundation", {"Foundation/"});
}

TEST(IncludeRulesTests, TextLeansOnFoundationAndOneUnicodeLibrary) {
    expectOnly("Text", {"Text/", "Foundation/"}, {"utf8proc.h"});
}

TEST(IncludeRulesTests, HotKeyLeansOnFoundationAlone) {
    expectOnly("HotKey", {"HotKey/", "Foundation/"});
}

TEST(IncludeRulesTests, PlatformInterfacesKnowNoBackend) {
    expectOnly("Platform", {"Platform/", "Foundation/", "HotKey/"}, {}, false);
    for (const Include& include : includesBelow("Platform", false)) {
        EXPECT_EQ(std::count(include.target.begin(), include.target.end(), '/') == 2, false)
            << include.file << " includes " << include.target;
    }
}

TEST(IncludeRulesTests, TheApplicationKnowsInterfacesAndNoBackend) {
    expectOnly("Pastewise", {"Pastewise/", "HotKey/", "Text/", "Foundation/", "Platform/"});
    for (const Include& include : includesBelow("Pastewise")) {
        for (const std::string backend :
             {"Platform/Memory/", "Platform/Linux/", "Platform/MacOS/", "Platform/Posix/"}) {
            EXPECT_FALSE(include.target.starts_with(backend))
                << include.file << " includes " << include.target;
        }
    }
}

TEST(IncludeRulesTests, ToolsLeanOnTextFoundationPosixAndOneJsonLibrary) {
    expectOnly("Tools",
               {"Tools/", "Text/", "Foundation/"},
               {"nlohmann/json.hpp", "fcntl.h", "getopt.h", "poll.h", "sys/stat.h", "unistd.h"});
}

TEST(IncludeRulesTests, OnlyTheEntryAndTheDelegateSeeTheWholePlatform) {
    for (const Include& include : includesBelow("Pastewise")) {
        if (include.target == "Platform/Platform.h") {
            const std::string name = fs::path(include.file).stem().string();
            EXPECT_TRUE(name == "PastewiseApp" || name == "SharedInstances" ||
                        name == "AppDelegate" || name == "main")
                << include.file << " includes " << include.target;
        }
    }
}

TEST(IncludeRulesTests, TheMemoryPlatformKnowsNoSystem) {
    expectOnly("Platform/Memory", {"Platform/", "HotKey/", "Foundation/"});
    for (const Include& include : includesBelow("Platform/Memory")) {
        EXPECT_FALSE(include.target.starts_with("Platform/Linux/")) << include.file;
    }
}

TEST(IncludeRulesTests, WhatPosixSystemsShareKnowsNoneOfThem) {
    expectOnly("Platform/Posix",
               {"Platform/Posix/", "Platform/Time.h", "Platform/Application.h"},
               {"fcntl.h", "unistd.h"});
}

TEST(IncludeRulesTests, TheMacAdaptersKnowInterfacesAndTheirSystem) {
    expectOnly("Platform/MacOS",
               {"Platform/", "HotKey/", "Foundation/"},
               {"AppKit/AppKit.h",
                "ApplicationServices/ApplicationServices.h",
                "Carbon/Carbon.h",
                "Foundation/Foundation.h",
                "dispatch/dispatch.h",
                "objc/runtime.h",
                "os/log.h"});
    for (const Include& include : includesBelow("Platform/MacOS")) {
        EXPECT_FALSE(include.target.starts_with("Platform/Linux/") ||
                     include.target.starts_with("Platform/Memory/"))
            << include.file << " includes " << include.target;
    }
}

TEST(IncludeRulesTests, OnlyTheLinuxFactoryNamesBackendsOfOtherFolders) {
    for (const Include& include : includesBelow("Platform/Linux")) {
        const std::string folder = fs::path(include.file).parent_path().string();
        const std::string targetFolder = fs::path(include.target).parent_path().string();
        const bool isBackend = targetFolder.starts_with("Platform/Linux/") &&
                               targetFolder != "Platform/Linux/Clipboard" &&
                               targetFolder != "Platform/Linux/Keys";
        if (isBackend && targetFolder != folder) {
            EXPECT_EQ(fs::path(include.file).stem(), "LinuxPlatform")
                << include.file << " includes " << include.target;
        }
    }
}

TEST(IncludeRulesTests, ClipboardFormatsDependOnNoDisplayProtocol) {
    expectOnly("Platform/Linux/Clipboard",
               {"Platform/Linux/Clipboard/", "Platform/Pasteboard.h", "Foundation/"},
               {"unistd.h"});
}

TEST(IncludeRulesTests, XcbStaysInItsFolderAndTheToolkitInItsFolders) {
    for (const std::string folder : {"Foundation", "Text", "HotKey", "Pastewise", "Platform"}) {
        for (const Include& include : includesBelow(folder)) {
            if (include.target.starts_with("xcb/")) {
                EXPECT_TRUE(include.file.starts_with("Platform/Linux/X11/")) << include.file;
            }
            if (include.target.starts_with("Q") && !include.isQuoted) {
                EXPECT_TRUE(include.file.starts_with("Platform/Linux/Qt/") ||
                            include.file.starts_with("Platform/Linux/DBus/") ||
                            include.file.starts_with("Platform/Linux/Store/") ||
                            include.file.starts_with("Platform/Linux/Tray/") ||
                            include.file == "Platform/Linux/LinuxPlatform.cpp")
                    << include.file;
            }
        }
    }
}

TEST(IncludeRulesTests, ThePortableCoreAsksForNoSystemByName) {
    static const std::regex pattern(
        R"(^\s*#\s*(el)?if(n?def)?\b.*(__APPLE__|__linux__|__unix__|_WIN32|Q_OS_))");
    for (const std::string folder : {"Foundation", "Text", "HotKey", "Pastewise"}) {
        for (const auto& entry : fs::recursive_directory_iterator(sourceFolder / folder)) {
            if (!entry.is_regular_file()) {
                continue;
            }
            std::ifstream file(entry.path());
            std::string line;
            while (std::getline(file, line)) {
                EXPECT_FALSE(std::regex_search(line, pattern)) << entry.path() << ": " << line;
            }
        }
    }
}

} // namespace
