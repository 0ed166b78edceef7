#pragma once

#include "Platform/Pasteboard.h"
#include "tests/Contract/Linux/SingleX11Pasteboard.h"
#include "tests/Support/PrivateXServer.h"

#include <sys/types.h>

#include <memory>
#include <optional>

namespace testing_support {

/// Two X11 pasteboards on one server, in two processes: texts are set in the other process and read
/// in this one, through the server.
class PairOfX11Pasteboards final : public platform::Pasteboard {
  public:
    PairOfX11Pasteboards();
    ~PairOfX11Pasteboards() override;

    void clearContents() override;
    [[nodiscard]] bool setString(foundation::TextBuffer text,
                                 platform::PasteboardType type) override;
    [[nodiscard]] std::optional<foundation::TextBuffer>
    string(platform::PasteboardType type) override;

  private:
    PrivateXServer server_;
    int descriptor_ = -1;
    pid_t writer_ = -1;
    std::unique_ptr<X11PasteboardOnALoop> reader_;
};

} // namespace testing_support
