// pastewise-convert: the clipboard conversion as a filter for scripts and pipes.

#include "Tools/ConvertOptions.h"
#include "Tools/Descriptor.h"
#include "Tools/Output.h"
#include "Tools/StreamConversion.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <exception>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace {

using tools::ConvertOptions;

enum ExitCode : int { success = 0, failure = 1, wrongUsage = 2 };

/// The rows of as many lines of one letter take 55 times as much.
constexpr std::size_t readSize = std::size_t{32} << 10U;

/// Allocates nothing, so that it can report a lack of memory. Ignores write errors.
void reportError(std::string_view error) {
    for (const std::string_view part :
         {std::string_view("pastewise-convert: "), error, std::string_view("\n")}) {
        static_cast<void>(tools::writeAll(STDERR_FILENO, part));
    }
}

void makeItemsLines(std::span<char> bytes) {
    for (char& byte : bytes) {
        byte = byte == '\0' ? '\n' : byte == '\n' || byte == '\r' ? ' ' : byte;
    }
}

void convertFile(const std::string& file,
                 bool isNullSeparated,
                 tools::StreamConversion& conversion) {
    const bool isStandardInput = file == "-";
    const int descriptor =
        isStandardInput ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    std::array<char, readSize> buffer; // NOLINT(*-member-init): filled by each read
    while (true) {
        const std::ptrdiff_t count = descriptor < 0 ? -1 : tools::readSome(descriptor, buffer);
        if (count < 0) {
            tools::throwSystemError("cannot read " + (isStandardInput ? "standard input" : file));
        }
        if (count == 0) {
            break;
        }
        const std::span<char> bytes(buffer.data(), static_cast<std::size_t>(count));
        if (isNullSeparated) {
            makeItemsLines(bytes);
        }
        conversion.add({bytes.data(), bytes.size()});
    }
    conversion.endLine();
    if (!isStandardInput) {
        close(descriptor);
    }
}

void convert(const ConvertOptions& options) {
    tools::Output output(options.output);
    tools::StreamConversion conversion(options.format,
                                       [&output](std::string_view text) { output.write(text); });
    for (const std::string& file : options.files) {
        convertFile(file, options.isNullSeparated, conversion);
    }
    conversion.finish();
    output.finish();
}

void print(std::string_view text) {
    tools::Output output("-");
    output.write(text);
    output.finish();
}

ExitCode run(int argc, char** argv) {
    const std::optional<ConvertOptions> options = tools::parseConvertOptions(argc, argv);
    if (!options) {
        static_cast<void>(tools::writeAll(STDERR_FILENO, tools::convertUsage));
        return wrongUsage;
    }
    switch (options->action) {
    case ConvertOptions::Action::convert:
        convert(*options);
        break;
    case ConvertOptions::Action::help:
        print(tools::convertHelp);
        break;
    case ConvertOptions::Action::version:
        print("pastewise-convert " PASTEWISE_VERSION "\n");
        break;
    }
    return success;
}

} // namespace

int main(int argc, char** argv) {
    // Makes writing to a closed pipe fail with EPIPE, which is reported.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        reportError("out of memory: a line, or with --json the list, is too long");
    } catch (const std::exception& error) {
        reportError(error.what());
    }
    return failure;
}
