#include "Platform/Memory/MemoryPasteboard.h"

#include "Foundation/Unicode.h"

#include <new>

namespace platform {

namespace {

std::string name(PasteboardType type) {
    return type == PasteboardType::string ? "string" : "html";
}

} // namespace

void MemoryPasteboard::clearContents() {
    note("clear");
    texts_.clear();
    holdsImage_ = false;
    ++changeCount_;
}

bool MemoryPasteboard::setString(foundation::TextBuffer text, PasteboardType type) {
    if (refused_.contains(type)) {
        note("set", name(type) + " refused");
        return false;
    }
    note("set", name(type));
    texts_.insert_or_assign(type, std::string(text.view()));
    return true;
}

std::optional<foundation::TextBuffer> MemoryPasteboard::string(PasteboardType type) {
    note("get", name(type));
    if (isOutOfMemory_) {
        throw std::bad_alloc();
    }
    const auto text = texts_.find(type);
    if (text == texts_.end()) {
        return std::nullopt;
    }
    return foundation::repairUtf8(foundation::TextBuffer(text->second));
}

void MemoryPasteboard::copyElsewhere(std::string_view text) {
    texts_.clear();
    texts_.emplace(PasteboardType::string, text);
    holdsImage_ = false;
    ++changeCount_;
}

void MemoryPasteboard::copyImageElsewhere() {
    texts_.clear();
    holdsImage_ = true;
    ++changeCount_;
}

} // namespace platform
