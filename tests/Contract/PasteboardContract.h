#pragma once

#include "Platform/Pasteboard.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace contract {

class PasteboardContract : public testing::TestWithParam<BackendMaker<platform::Pasteboard>> {
  protected:
    [[nodiscard]] bool set(std::string_view text, platform::PasteboardType type) {
        return pasteboard_->setString(foundation::TextBuffer(text), type);
    }

    [[nodiscard]] std::optional<std::string> get(platform::PasteboardType type) {
        const auto text = pasteboard_->string(type);
        return text ? std::optional<std::string>(text->view()) : std::nullopt;
    }

    void expectKept(std::string_view text) {
        pasteboard_->clearContents();
        ASSERT_TRUE(set(text, platform::PasteboardType::string));
        // EXPECT_EQ would print the text, which may be huge.
        EXPECT_TRUE(get(platform::PasteboardType::string) == text);
    }

    std::unique_ptr<platform::Pasteboard> pasteboard_ = GetParam().make();
};

} // namespace contract
