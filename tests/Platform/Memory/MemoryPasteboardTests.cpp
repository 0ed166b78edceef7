#include "Platform/Memory/MemoryPasteboard.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using foundation::TextBuffer;
using platform::MemoryPasteboard;
using platform::PasteboardType;

TEST(MemoryPasteboardTests, RefusesOneTypeOnDemand) {
    MemoryPasteboard pasteboard;
    pasteboard.refuse(PasteboardType::html);
    pasteboard.clearContents();
    EXPECT_TRUE(pasteboard.setString(TextBuffer("a"), PasteboardType::string));
    EXPECT_FALSE(pasteboard.setString(TextBuffer("b"), PasteboardType::html));
    EXPECT_EQ(pasteboard.contents().size(), 1U);
    EXPECT_EQ(pasteboard.journal()->calls(),
              (std::vector<std::string>{"clear", "set string", "set html refused"}));
}

TEST(MemoryPasteboardTests, ReadsNoTextFromAnImage) {
    MemoryPasteboard pasteboard;
    pasteboard.copyElsewhere("text");
    pasteboard.copyImageElsewhere();
    EXPECT_FALSE(pasteboard.string(PasteboardType::string).has_value());
    EXPECT_TRUE(pasteboard.holdsImage());
    EXPECT_EQ(pasteboard.changeCount(), 2U);
}

} // namespace
