#include "Foundation/TextBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using foundation::TextBuffer;

TEST(TextBufferTests, StartsEmpty) {
    const TextBuffer buffer;
    EXPECT_TRUE(buffer.empty());
    EXPECT_EQ(buffer.view(), "");
}

TEST(TextBufferTests, CopiesTheGivenText) {
    std::string text = "milk";
    const TextBuffer buffer{std::string_view(text)};
    text[0] = 's';
    EXPECT_EQ(buffer.view(), "milk");
}

TEST(TextBufferTests, KeepsZeroBytes) {
    const TextBuffer buffer(std::string_view("a\0b", 3));
    EXPECT_EQ(buffer.view(), std::string_view("a\0b", 3));
}

TEST(TextBufferTests, AppendsAcrossGrowth) {
    TextBuffer buffer;
    std::string expected;
    for (int i = 0; i < 10'000; ++i) {
        const std::string piece = std::to_string(i);
        buffer.append(piece);
        expected += piece;
    }
    EXPECT_EQ(buffer.view(), expected);
}

TEST(TextBufferTests, AppendsUninitialisedBytesForTheCallerToFill) {
    TextBuffer buffer("ab");
    std::memcpy(buffer.appendUninitialised(2), "cd", 2);
    EXPECT_EQ(buffer.view(), "abcd");
}

TEST(TextBufferTests, DoesNotReallocateWithinTheReservedCapacity) {
    TextBuffer buffer;
    buffer.reserve(1000);
    buffer.append("first");
    const char* before = buffer.view().data();
    buffer.append(std::string(995, 'x'));
    EXPECT_EQ(buffer.view().data(), before);
}

TEST(TextBufferTests, MovingTransfersTheBlockAndLeavesAnEmptyBuffer) {
    TextBuffer from("x");
    const char* address = from.view().data();
    const TextBuffer to = std::move(from);
    EXPECT_EQ(to.view().data(), address);
    EXPECT_EQ(to.view(), "x");
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): still usable
    EXPECT_TRUE(from.empty());
    from.append("new life");
    EXPECT_EQ(from.view(), "new life");
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
}

TEST(TextBufferTests, TruncatesButNeverExtends) {
    TextBuffer buffer("milk");
    buffer.truncate(1);
    EXPECT_EQ(buffer.view(), "m");
    EXPECT_DEATH(buffer.truncate(2), "Fatal error: TextBuffer::truncate cannot lengthen a text");
}

TEST(TextBufferTests, ThrowsAndStaysUnchangedWhenMemoryRunsOut) {
    TextBuffer buffer("milk");
    const std::size_t tooMuch = std::numeric_limits<std::size_t>::max() - 8;
    EXPECT_THROW(static_cast<void>(buffer.appendUninitialised(tooMuch)), std::bad_alloc);
    EXPECT_EQ(buffer.view(), "milk");
}

TEST(TextBufferTests, CallsTheHookForEachLargeBlock) {
    static std::vector<std::pair<char*, std::size_t>> blocks;
    TextBuffer::setLargeBlockHook(
        [](char* block, std::size_t size) { blocks.emplace_back(block, size); });
    TextBuffer buffer;
    buffer.reserve(TextBuffer::largeBlockSize - 1);
    EXPECT_TRUE(blocks.empty());
    buffer.reserve(TextBuffer::largeBlockSize);
    const char* const first = buffer.appendUninitialised(1);
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].first, first);
    EXPECT_EQ(blocks[0].second, TextBuffer::largeBlockSize);
    TextBuffer::setLargeBlockHook(nullptr);
    const TextBuffer other(std::string(TextBuffer::largeBlockSize, 'x'));
    EXPECT_EQ(blocks.size(), 1U);
}

} // namespace
