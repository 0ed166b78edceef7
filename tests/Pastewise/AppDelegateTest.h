#pragma once

#include "Pastewise/AppDelegate.h"
#include "Pastewise/SharedInstances.h"
#include "Platform/Memory/MemoryPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

namespace delegate_test {

/// The delegate on a system in memory, launched by the test.
class AppDelegateTest : public testing::Test {
  protected:
    static constexpr platform::MemoryEventHotKeyService::Combination commandG{5, 0x100};

    void launch() {
        shared_ = std::make_unique<pastewise::SharedInstances>(system_);
        delegate_ = std::make_unique<pastewise::AppDelegate>(system_, *shared_);
        delegate_->applicationDidFinishLaunching();
    }

    /// Launches and clears the log.
    void launchQuietly() {
        launch();
        system_.logSink().clear();
    }

    void copy(const std::string& text) { system_.pasteboard().copyElsewhere(text); }

    void pressShortcut() {
        EXPECT_EQ(system_.eventHotKeyService().press(commandG), hotkey::noErr);
        static_cast<void>(system_.eventHotKeyService().release(commandG));
    }

    [[nodiscard]] platform::MemoryStatusItem& item() { return *system_.statusBar().item(); }

    [[nodiscard]] platform::MemoryStatusBarButton& button() { return *item().memoryButton(); }

    [[nodiscard]] std::string rowTitle(std::size_t row) {
        return item().menu()->items().at(row)->title();
    }

    [[nodiscard]] std::ptrdiff_t logged(std::string_view message) {
        const auto messages = system_.logSink().messages();
        return std::count(messages.begin(), messages.end(), message);
    }

    /// The text of the glyph that the image draws.
    [[nodiscard]] static std::string glyph(const platform::MemoryImage& image) {
        platform::MemoryCanvas canvas;
        image.drawOn(canvas);
        return canvas.texts().empty() ? std::string() : canvas.texts().front().text;
    }

    [[nodiscard]] std::string shownGlyph() { return glyph(*button().image()); }

    platform::MemoryPlatform system_;
    std::unique_ptr<pastewise::SharedInstances> shared_;
    std::unique_ptr<pastewise::AppDelegate> delegate_;
};

} // namespace delegate_test
