#include "tests/Desktop/StoredSettings.h"

#include <fstream>
#include <iterator>
#include <regex>

namespace program_test {

std::optional<StoredSettings> StoredSettings::read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string xml(std::istreambuf_iterator<char>(file), {});
    const bool isComplete = xml.starts_with("<?xml ") && xml.ends_with("</dict>\n</plist>\n");
    return isComplete ? std::optional(StoredSettings(xml)) : std::nullopt;
}

bool StoredSettings::holds(const std::string& key) const {
    return xml_.find("<key>" + key + "</key>") != std::string::npos;
}

double StoredSettings::savedSeconds() const {
    static const std::regex pattern(
        R"(<key>analytics\.todaySavedSeconds\.[0-9-]{10}</key><real>([0-9.e+]+)</real>)");
    double sum = 0;
    for (auto day = std::sregex_iterator(xml_.begin(), xml_.end(), pattern);
         day != std::sregex_iterator();
         ++day) {
        sum += std::stod((*day)[1]);
    }
    return sum;
}

std::optional<StoredSettings::Shortcut> StoredSettings::shortcut() const {
    static const std::regex pattern(R"(<key>userDefinedShortcut</key><dict>)"
                                    R"(<key>keyCode</key><integer>(\d+)</integer>)"
                                    R"(<key>modifiers</key><integer>(\d+)</integer></dict>)");
    std::smatch match;
    if (!std::regex_search(xml_, match, pattern)) {
        return std::nullopt;
    }
    return Shortcut{.keyCode = std::stoull(match[1]), .modifiers = std::stoull(match[2])};
}

} // namespace program_test
