#include "tests/Contract/Linux/SingleX11Pasteboard.h"

#include "Platform/Linux/X11/X11Connection.h"

#include <utility>

namespace testing_support {

X11PasteboardOnALoop::X11PasteboardOnALoop(const std::string& display)
    : pasteboard_(platform::X11Connection::open(display), loop_, queue_, loggers_) {}

void SingleX11Pasteboard::clearContents() {
    world_.pasteboard().clearContents();
    QCoreApplication::processEvents();
}

bool SingleX11Pasteboard::setString(foundation::TextBuffer text, platform::PasteboardType type) {
    const bool isSet = world_.pasteboard().setString(std::move(text), type);
    QCoreApplication::processEvents();
    return isSet;
}

std::optional<foundation::TextBuffer> SingleX11Pasteboard::string(platform::PasteboardType type) {
    auto text = world_.pasteboard().string(type);
    QCoreApplication::processEvents();
    return text;
}

} // namespace testing_support
