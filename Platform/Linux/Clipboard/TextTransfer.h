#pragma once

#include "Foundation/TextBuffer.h"
#include "Platform/Pasteboard.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace platform {

// What counts as text on a Linux clipboard, whatever the display protocol. Formats have names: X11
// calls them targets, some of which are MIME types; Wayland has MIME types only.

enum class TextEncoding : std::uint8_t {
    utf8,
    latin1,      ///< ISO 8859-1
    utf8OrLatin1 ///< UTF-8 if well-formed, else ISO 8859-1
};

struct TextFormat {
    std::string_view name;
    PasteboardType type;
    TextEncoding encoding;
};

/// The formats to read, best first. An X11 answer to STRING or TEXT may state another encoding.
inline constexpr std::array acceptedFormats{
    TextFormat{"UTF8_STRING", PasteboardType::string, TextEncoding::utf8},
    TextFormat{"text/plain;charset=utf-8", PasteboardType::string, TextEncoding::utf8},
    TextFormat{"text/plain", PasteboardType::string, TextEncoding::utf8OrLatin1},
    TextFormat{"STRING", PasteboardType::string, TextEncoding::latin1},
    TextFormat{"TEXT", PasteboardType::string, TextEncoding::latin1},
    TextFormat{"text/html", PasteboardType::html, TextEncoding::utf8},
};

/// The formats in which our own texts are offered, under every name that other programs look for.
inline constexpr std::array offeredFormats{
    TextFormat{"text/html", PasteboardType::html, TextEncoding::utf8},
    TextFormat{"text/plain;charset=utf-8", PasteboardType::string, TextEncoding::utf8},
    TextFormat{"UTF8_STRING", PasteboardType::string, TextEncoding::utf8},
    TextFormat{"text/plain", PasteboardType::string, TextEncoding::utf8},
    TextFormat{"TEXT", PasteboardType::string, TextEncoding::utf8},
    TextFormat{"STRING", PasteboardType::string, TextEncoding::latin1},
};

/// The formats by which file managers mark a list of files.
inline constexpr std::array<std::string_view, 3> fileListFormats{
    "x-special/gnome-copied-files",
    "x-special/mate-copied-files",
    "application/x-kde-cutselection",
};

/// A list of addresses: of files, or of a copied link.
inline constexpr std::string_view uriListFormat = "text/uri-list";

using FormatNames = std::vector<std::string_view>;

[[nodiscard]] bool contains(const FormatNames& offers, std::string_view name);

/// The accepted formats of `type` among `offers`, best first.
///
/// A text counts as text even beside an image of it, as spreadsheets and word processors offer it.
/// A list of files does not, although file managers offer the file names as text: no format is
/// accepted beside one of fileListFormats. If there is a uriListFormat among the offers, the caller
/// also has to rule out that startsWithFile() its contents.
[[nodiscard]] std::vector<TextFormat> acceptable(PasteboardType type, const FormatNames& offers);

/// Whether the first address of a text/uri-list is that of a file.
[[nodiscard]] bool startsWithFile(std::string_view uriList);

/// Turns received bytes into well-formed UTF-8. Throws std::bad_alloc.
[[nodiscard]] foundation::TextBuffer decode(foundation::TextBuffer bytes, TextEncoding encoding);

/// The bytes to send for a well-formed UTF-8 text: `text` itself unless `encoding` is Latin-1,
/// which gets '?' for each character that it lacks. Throws std::bad_alloc.
[[nodiscard]] std::shared_ptr<const foundation::TextBuffer>
encode(std::shared_ptr<const foundation::TextBuffer> text, TextEncoding encoding);

/// Time and size limits for transfers with other clients.
struct TransferLimits {
    /// A sixteenth of physical memory: hundreds of megabytes, and leaves memory for the conversion.
    /// Lines of one letter grow about 65-fold, so even a text within this limit may become too
    /// large to convert.
    [[nodiscard]] static std::size_t sixteenthOfMemory() {
        return static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
               static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 16;
    }

    /// Time without progress after which an owner that we read from, or a clipboard manager that
    /// takes over our texts, is given up. There is no limit on a transfer that makes progress.
    std::chrono::milliseconds silence{1000};

    /// Time without progress after which a receiver of a large text is given up. Checked
    /// periodically, so it may take up to twice as long.
    std::chrono::milliseconds sending{10'000};

    /// Maximum bytes sent to another client at once.
    std::size_t chunkSize = std::size_t{256} * 1024;

    /// Maximum bytes read.
    std::size_t maximumTextSize = sixteenthOfMemory();
};

} // namespace platform
