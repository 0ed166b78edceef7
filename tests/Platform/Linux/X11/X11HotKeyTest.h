#pragma once

#include "HotKey/EventHotKeyService.h"
#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/X11/X11EventHotKeyService.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/PrivateXServer.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace testing_support {

/// An event loop that counts its watches and their calls.
class CountingEventLoop final : public platform::EventLoop {
  public:
    [[nodiscard]] std::unique_ptr<platform::FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) override;

    [[nodiscard]] int watchCount() const { return watchCount_; }

    [[nodiscard]] int readyCount() const { return readyCount_; }

  private:
    class Watch;

    platform::QtEventLoop loop_;
    int watchCount_ = 0;
    int readyCount_ = 0;
};

/// The hot-key service on a private X server with a keyboard.
class X11HotKeyTest : public testing::Test {
  protected:
    static constexpr std::uint32_t keyG = 0x05; ///< A Carbon key code, like the next.
    static constexpr std::uint32_t keyF1 = 0x7A;
    static constexpr std::uint8_t x11KeyG = KEY_G + 8;
    static constexpr std::uint16_t superMask = XCB_MOD_MASK_4;

    X11HotKeyTest();

    /// Sets reference_ on success.
    hotkey::OSStatus
    registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id = 1);

    /// The events of all keys pressed so far ("down 1"). Keys take effect in order, so this presses
    /// one more hot key, Control+F1, and waits for its events.
    std::vector<std::string> events();

    bool turnUntilEvent(const std::string& event);

    /// Runs setxkbmap.
    void setLayout(const std::vector<std::string>& arguments);

    void pressSuperG() { keyboard_->tapTogether({KEY_LEFTMETA, KEY_G}); }

    std::unique_ptr<PrivateXServer> server_ = std::make_unique<PrivateXServer>();
    QtTestLoop loop_;
    CountingEventLoop eventLoop_;
    platform::QtMainQueue mainQueue_;
    std::optional<FakeKeyboard> keyboard_{std::in_place, server_->display()};
    std::vector<std::string> events_;
    std::function<void(const std::string&)> onEvent_;
    hotkey::EventHotKeyRef reference_;
    std::unique_ptr<platform::X11EventHotKeyService> service_;

  private:
    void note(hotkey::EventRef event);
};

} // namespace testing_support
