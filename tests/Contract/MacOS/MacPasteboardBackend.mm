#import "Platform/MacOS/MacPasteboard.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "tests/Contract/PasteboardContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <optional>
#include <utility>

namespace contract {

namespace {

/// A pasteboard of the test's own: the user's stays as it is.
class UniqueMacPasteboard final : public platform::Pasteboard {
  public:
    UniqueMacPasteboard() = default;

    ~UniqueMacPasteboard() override { [nsPasteboard_ releaseGlobally]; }

    void clearContents() override { pasteboard_.clearContents(); }

    [[nodiscard]] bool setString(foundation::TextBuffer text,
                                 platform::PasteboardType type) override {
        return pasteboard_.setString(std::move(text), type);
    }

    [[nodiscard]] std::optional<foundation::TextBuffer>
    string(platform::PasteboardType type) override {
        return pasteboard_.string(type);
    }

  private:
    testing_support::AppKitLoop loop_;
    platform::MemoryLogSink logSink_;
    NSPasteboard* const nsPasteboard_ = [NSPasteboard pasteboardWithUniqueName];
    platform::MacPasteboard pasteboard_{nsPasteboard_,
                                        foundation::Logger(logSink_, "test", "MacPasteboard")};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         PasteboardContract,
                         (backend<platform::Pasteboard, UniqueMacPasteboard>("Mac")),
                         nameOfBackend<platform::Pasteboard>);

} // namespace contract
