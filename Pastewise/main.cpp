#include "Pastewise/PastewiseApp.h"
#include "Platform/Platform.h"

#include <cstdio>
#include <memory>
#include <string_view>
#include <variant>

namespace {

constexpr const char* help =
    "Usage: pastewise [--help | --version]\n"
    "\n"
    "Waits in the tray for its shortcut, and then turns the list on the clipboard into one that\n"
    "the Miro whiteboard pastes as sticky notes. A second start opens the preferences.\n"
    "\n"
    "  --help     write this help\n"
    "  --version  write the version\n"
    "\n"
    "The exit status is 0 after a normal end, 1 if the program cannot run in this session, and 2 "
    "if\n"
    "the arguments are invalid.\n";

} // namespace

int main(int argc, char** argv) {
    const std::string_view argument = argc == 2 ? argv[1] : "";
    if (argument == "--help" || argument == "-h") {
        std::fputs(help, stdout);
        return 0;
    }
    if (argument == "--version") {
        std::puts("pastewise " PASTEWISE_VERSION);
        return 0;
    }
    const platform::PlatformOrNot made = platform::makePlatform(argc, argv);
    if (std::holds_alternative<platform::AlreadyRunning>(made)) {
        return 0;
    }
    if (const auto* none = std::get_if<platform::NoPlatform>(&made)) {
        std::fprintf(stderr, "pastewise: %s\n", none->reason.c_str());
        return 1;
    }
    if (const auto* unknown = std::get_if<platform::UnknownArgument>(&made)) {
        std::fprintf(
            stderr, "pastewise: unknown argument: %s\n%s", unknown->argument.c_str(), help);
        return 2;
    }
    return pastewise::PastewiseApp(*std::get<std::unique_ptr<platform::Platform>>(made)).main();
}
