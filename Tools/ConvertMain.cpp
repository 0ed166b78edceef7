// pastewise-convert: the clipboard conversion as a filter for scripts and pipes.

#include "Foundation/TextBuffer.h"
#include "Foundation/Unicode.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "Tools/Conversion.h"
#include "Tools/Descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

using foundation::TextBuffer;
using tools::ConvertMode;

enum ExitCode : int { success = 0, failure = 1, wrongUsage = 2 };

constexpr std::string_view help =
    "\n"
    "Reads a list from standard input, one item per line, and writes it to standard output\n"
    "as the HTML document that a whiteboard pastes as one sticky note per item. Bullets,\n"
    "numbers, surrounding white space and blank lines are dropped.\n"
    "\n"
    "  --plain    write the cleaned lines instead\n"
    "  --count    write the number of sticky notes instead\n"
    "  --json     write an object with \"html\", \"plainText\" and \"stickyCount\" instead\n"
    "  --help     write this help\n"
    "  --version  write the version\n"
    "\n"
    "Input is UTF-8; invalid bytes become U+FFFD. The exit status is 0 on success, 1 if reading\n"
    "or writing fails or memory runs out, and 2 if the arguments are invalid.\n";

/// Allocates nothing, so that it can report a lack of memory. Ignores write errors.
void reportError(std::string_view about, std::string_view detail = {}) {
    for (const std::string_view part :
         {std::string_view("pastewise-convert: "),
          about,
          detail.empty() ? std::string_view() : std::string_view(": "),
          detail,
          std::string_view("\n")}) {
        static_cast<void>(tools::writeAll(STDERR_FILENO, part));
    }
}

/// Closes standard output, since some file systems report a failed write only then, and reports
/// any error.
ExitCode finish(std::error_code error) {
    if (!error && close(STDOUT_FILENO) != 0) {
        error = {errno, std::generic_category()};
    }
    if (error) {
        reportError("cannot write to standard output", error.message());
        return failure;
    }
    return success;
}

ExitCode writeOutput(std::string_view text) {
    return finish(tools::writeAll(STDOUT_FILENO, text));
}

/// Converts standard input and has `write` write the payload.
template <typename Write>
ExitCode convert(Write write) {
    TextBuffer input;
    if (const std::error_code error = tools::readToEnd(STDIN_FILENO, input)) {
        reportError("cannot read standard input", error.message());
        return failure;
    }
    return write(text::makeSheetDocument(text::LineList(foundation::repairUtf8(std::move(input)))));
}

ExitCode run(std::span<const char* const> arguments) {
    const std::optional<ConvertMode> mode = tools::parseConvertMode(arguments);
    if (!mode) {
        static_cast<void>(tools::writeAll(STDERR_FILENO, tools::convertUsage));
        return wrongUsage;
    }
    switch (*mode) {
    case ConvertMode::html:
        return convert([](const auto& payload) { return writeOutput(payload.html.view()); });
    case ConvertMode::plainText:
        return convert([](const auto& payload) { return writeOutput(payload.plainText.view()); });
    case ConvertMode::count:
        return convert(
            [](const auto& payload) { return writeOutput(tools::countOutput(payload)); });
    case ConvertMode::json:
        return convert(
            [](const auto& payload) { return finish(tools::writeJson(STDOUT_FILENO, payload)); });
    case ConvertMode::help:
        return writeOutput(std::string(tools::convertUsage) + std::string(help));
    case ConvertMode::version:
        return writeOutput("pastewise-convert " PASTEWISE_VERSION "\n");
    }
    return wrongUsage;
}

} // namespace

int main(int argc, char** argv) {
    // Makes writing to a closed pipe fail with EPIPE, which is reported.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    try {
        const std::span<const char* const> all(argv, static_cast<std::size_t>(argc));
        return run(all.subspan(all.empty() ? 0 : 1));
    } catch (const std::bad_alloc&) {
        reportError("out of memory");
        return failure;
    }
}
