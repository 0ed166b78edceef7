#include "tests/Support/CommaLocale.h"

#include "tests/Support/ChildProcess.h"

#include <locale.h>

#include <chrono>
#include <stdexcept>

namespace testing_support {

namespace {

constexpr const char* localeName = "de_DE.UTF-8";

bool isInstalled() {
    const locale_t locale = newlocale(LC_ALL_MASK, localeName, nullptr);
    if (locale == nullptr) {
        return false;
    }
    freelocale(locale);
    return true;
}

} // namespace

CommaLocale::CommaLocale() {
    if (isInstalled()) {
        return;
    }
    ChildProcess localedef({"localedef",
                            "--inputfile=de_DE",
                            "--charmap=UTF-8",
                            (folder_.path() / localeName).string()});
    // Compiling a locale takes seconds of processor time.
    if (localedef.waitForExit(std::chrono::seconds(45)) != 0) {
        throw std::runtime_error("localedef: " + localedef.standardError());
    }
}

std::map<std::string, std::string> CommaLocale::environment() const {
    std::map<std::string, std::string> variables{{"LC_ALL", localeName}};
    if (!std::filesystem::is_empty(folder_.path())) {
        variables["LOCPATH"] = folder_.path().string();
    }
    return variables;
}

} // namespace testing_support
