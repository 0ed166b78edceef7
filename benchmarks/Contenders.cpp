#include "benchmarks/Contenders.h"

#include "Foundation/Logger.h"
#include "Pastewise/ClipboardManager.h"
#include "Text/LineList.h"
#include "Text/SheetDocument.h"
#include "benchmarks/Pcre2Conversion.h"
#include "benchmarks/Timing.h"
#include "tests/Reference/ReferenceConversion.h"

#include <malloc.h>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

using foundation::TextBuffer;

/// Returns one prepared text and discards what is set.
class PreparedPasteboard final : public platform::Pasteboard {
  public:
    explicit PreparedPasteboard(std::string_view text) : text_(TextBuffer(text)) {}

    void clearContents() override {}

    [[nodiscard]] bool setString(TextBuffer text, platform::PasteboardType type) override {
        (type == platform::PasteboardType::html ? html_ : plainText_) = std::move(text);
        return true;
    }

    [[nodiscard]] std::optional<TextBuffer> string(platform::PasteboardType /*type*/) override {
        return std::move(text_);
    }

  private:
    TextBuffer text_;
    TextBuffer html_;
    TextBuffer plainText_;
};

class SilentLogSink final : public foundation::LogSink {
  public:
    foundation::LogChannel& channel(std::string_view /*subsystem*/,
                                    std::string_view /*category*/) override {
        return channel_;
    }

  private:
    class Channel final : public foundation::LogChannel {
      public:
        [[nodiscard]] bool isEnabled(foundation::LogLevel /*level*/) const noexcept override {
            return false;
        }

        void write(const foundation::LogRecord& /*record*/) noexcept override {}
    };

    Channel channel_;
};

struct Conversion {
    text::LineList lines;
    text::ConversionPayload payload;
};

Conversion convert(TextBuffer text) {
    text::LineList lines(std::move(text));
    text::ConversionPayload payload = text::makeSheetDocument(lines);
    return {.lines = std::move(lines), .payload = std::move(payload)};
}

/// The mean time of `repetitions` calls. Before a single call, the allocator returns all free
/// memory to the system; freeing its result is not timed.
template <typename Action>
double timeOfEach(std::size_t repetitions, const Action& action) {
    if (repetitions == 1) {
        malloc_trim(0);
        const double begin = now();
        const auto result = action(std::size_t{0});
        return now() - begin;
    }
    return timeOf([&] {
               for (std::size_t i = 0; i < repetitions; ++i) {
                   static_cast<void>(action(i));
               }
           }) /
           static_cast<double>(repetitions);
}

} // namespace

double timeOfConversion(const std::string& text, std::size_t repetitions) {
    std::vector<TextBuffer> texts;
    for (std::size_t i = 0; i < repetitions; ++i) {
        texts.emplace_back(text);
    }
    return timeOfEach(repetitions,
                      [&texts](std::size_t i) { return convert(std::move(texts[i])); });
}

double timeOfReference(const std::string& text, std::size_t repetitions) {
    return timeOfEach(repetitions, [&text](std::size_t) { return reference::convert(text); });
}

double timeOfPcre2(const std::string& text, std::size_t repetitions) {
    return timeOfEach(repetitions, [&text](std::size_t) { return convertWithPcre2(text); });
}

Finished finish(const std::string& text) {
    const text::ConversionPayload payload = convert(TextBuffer(text)).payload;
    return {.html = std::string(payload.html.view()),
            .plainText = std::string(payload.plainText.view())};
}

double timeOfCopy(const Finished& finished, std::size_t repetitions) {
    return timeOfEach(repetitions, [&finished](std::size_t) {
        return std::pair(TextBuffer(finished.html), TextBuffer(finished.plainText));
    });
}

bool allAgree(const std::string& text) {
    const Finished finished = finish(text);
    const reference::Payload ofReference = reference::convert(text);
    const Pcre2Payload ofPcre2 = convertWithPcre2(text);
    return finished.html == ofReference.html && finished.html == ofPcre2.html &&
           finished.plainText == ofReference.plainText && finished.plainText == ofPcre2.plainText;
}

double timeOfManager(const std::string& text) {
    PreparedPasteboard pasteboard(text);
    SilentLogSink sink;
    const foundation::LoggerFactory loggers(sink, "com.app.pastewise");
    pastewise::ClipboardManager manager(pasteboard, loggers);
    malloc_trim(0);
    return timeOf([&manager] {
        const auto lines = manager.readClipboard();
        pastewise::ConversionPayload payload = manager.generateHTML(*lines);
        static_cast<void>(
            manager.writeToClipboard(std::move(payload.html), std::move(payload.plainText)));
    });
}

} // namespace benchmarks
