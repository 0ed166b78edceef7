#include "Tools/ConvertOptions.h"

#include <getopt.h>

#include <array>

namespace tools {

namespace {

constexpr auto longOptions = std::to_array<option>({
    {"plain", no_argument, nullptr, 'p'},
    {"count", no_argument, nullptr, 'c'},
    {"json", no_argument, nullptr, 'j'},
    {"null", no_argument, nullptr, '0'},
    {"output", required_argument, nullptr, 'o'},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'V'},
    {},
});

} // namespace

const std::string_view convertHelp =
    "Usage: pastewise-convert [OPTION]... [FILE]...\n"
    "\n"
    "Reads a list, one item per line, and writes it as the HTML document that a\n"
    "whiteboard pastes as one sticky note per item. Bullets, numbers, surrounding\n"
    "white space and blank lines are dropped. Reads standard input without a FILE\n"
    "and where FILE is -. The end of a file ends an item.\n"
    "\n"
    "  -p, --plain        write the cleaned lines instead\n"
    "  -c, --count        write the number of sticky notes instead\n"
    "  -j, --json         write an object with \"html\", \"plainText\" and \"stickyCount\"\n"
    "  -0, --null         NUL separates items, and line breaks in them become spaces\n"
    "  -o, --output=FILE  write to FILE, replacing it when the output is complete\n"
    "  -h, --help         write this help\n"
    "  -V, --version      write the version\n"
    "\n"
    "Input is UTF-8; invalid bytes become U+FFFD. The output begins before the input\n"
    "ends. The exit status is 0 on success, 1 if reading or writing fails or memory\n"
    "runs out, and 2 if the arguments are invalid.\n";

std::optional<ConvertOptions> parseConvertOptions(int argc, char** argv) {
    ConvertOptions options;
    bool isValid = true;
    bool hasFormat = false;
    const auto setFormat = [&](OutputFormat format) {
        isValid &= !hasFormat;
        hasFormat = true;
        options.format = format;
    };
    int option = 0;
    while ((option = getopt_long(argc, argv, "pcj0o:hV", longOptions.data(), nullptr)) != -1) {
        switch (option) {
        case 'p':
            setFormat(OutputFormat::plainText);
            break;
        case 'c':
            setFormat(OutputFormat::count);
            break;
        case 'j':
            setFormat(OutputFormat::json);
            break;
        case '0':
            options.isNullSeparated = true;
            break;
        case 'o':
            options.output = optarg;
            break;
        case 'h':
            options.action = ConvertOptions::Action::help;
            break;
        case 'V':
            options.action = ConvertOptions::Action::version;
            break;
        default:
            isValid = false;
            break;
        }
    }
    if (optind < argc) {
        options.files.assign(argv + optind, argv + argc);
    }
    return isValid ? std::optional(options) : std::nullopt;
}

} // namespace tools
