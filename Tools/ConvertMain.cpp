// pastewise-convert: the conversion of the clipboard as a filter, for scripts and pipes.

#include "Foundation/TextBuffer.h"
#include "Foundation/Utf8.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "Tools/ConvertMode.h"
#include "Tools/ConvertOutput.h"
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
    "Input is UTF-8; what is not becomes U+FFFD. The exit status is 0 when all was written,\n"
    "1 when reading, writing or memory failed, and 2 when the arguments are wrong.\n";

/// Needs no memory, to be able to say that there is none. There is nobody left to tell when it
/// fails.
void complain(std::string_view about, std::string_view detail = {}) {
    for (const std::string_view part :
         {std::string_view("pastewise-convert: "),
          about,
          detail.empty() ? std::string_view() : std::string_view(": "),
          detail,
          std::string_view("\n")}) {
        static_cast<void>(tools::writeAll(STDERR_FILENO, part));
    }
}

/// The end of a writing to standard output, which is closed: some file systems tell only then that
/// they have not kept what was written.
ExitCode finish(std::error_code error) {
    if (!error && close(STDOUT_FILENO) != 0) {
        error = {errno, std::generic_category()};
    }
    if (error) {
        complain("cannot write to standard output", error.message());
        return failure;
    }
    return success;
}

ExitCode writeOutput(std::string_view text) {
    return finish(tools::writeAll(STDOUT_FILENO, text));
}

ExitCode convert(ConvertMode mode) {
    TextBuffer input;
    if (const std::error_code error = tools::readToEnd(STDIN_FILENO, input)) {
        complain("cannot read standard input", error.message());
        return failure;
    }
    const text::ConversionPayload payload =
        text::makeSheetDocument(text::LineList(foundation::repairUtf8(std::move(input))));
    switch (mode) {
    case ConvertMode::plainText:
        return writeOutput(payload.plainText.view());
    case ConvertMode::count:
        return writeOutput(tools::countOutput(payload));
    case ConvertMode::json:
        return finish(tools::writeJson(STDOUT_FILENO, payload));
    default:
        return writeOutput(payload.html.view());
    }
}

ExitCode run(std::span<const char* const> arguments) {
    const std::optional<ConvertMode> mode = tools::parseConvertMode(arguments);
    if (!mode) {
        static_cast<void>(tools::writeAll(STDERR_FILENO, tools::convertUsage));
        return wrongUsage;
    }
    switch (*mode) {
    case ConvertMode::help:
        return writeOutput(std::string(tools::convertUsage) + std::string(help));
    case ConvertMode::version:
        return writeOutput("pastewise-convert " PASTEWISE_VERSION "\n");
    default:
        return convert(*mode);
    }
}

} // namespace

int main(int argc, char** argv) {
    // A reader that goes away shall be a failed write that can be told about.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    try {
        const std::span<const char* const> all(argv, static_cast<std::size_t>(argc));
        return run(all.subspan(all.empty() ? 0 : 1));
    } catch (const std::bad_alloc&) {
        complain("out of memory");
        return failure;
    }
}
