#pragma once

#include "Platform/Window.h"

#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A window in memory. Showing and closing it do what the user would see and what the user would
/// do. Main thread only.
class MemoryWindow final : public Window {
  public:
    /// The window stands in `windows` for as long as it exists.
    MemoryWindow(Rect contentRect,
                 WindowStyle style,
                 WindowBacking backing,
                 std::vector<MemoryWindow*>& windows);
    ~MemoryWindow() override;
    MemoryWindow(const MemoryWindow&) = delete;
    MemoryWindow& operator=(const MemoryWindow&) = delete;
    MemoryWindow(MemoryWindow&&) = delete;
    MemoryWindow& operator=(MemoryWindow&&) = delete;

    void setTitle(std::string title) override { title_ = std::move(title); }

    void center() override { isCentered_ = true; }

    void setContentViewController(ViewController& controller) override;
    void makeKeyAndOrderFront() override;
    void close() override;

    [[nodiscard]] bool isVisible() const override { return isVisible_; }

    [[nodiscard]] Rect contentRect() const { return contentRect_; }

    [[nodiscard]] WindowStyle style() const { return style_; }

    [[nodiscard]] WindowBacking backing() const { return backing_; }

    [[nodiscard]] const std::string& title() const { return title_; }

    [[nodiscard]] bool isCentered() const { return isCentered_; }

    /// Null while the window has no content.
    [[nodiscard]] ViewController* contentViewController() const { return contentViewController_; }

    /// How often the window was brought to the front and given the keyboard.
    [[nodiscard]] int keyAndFrontCount() const { return keyAndFrontCount_; }

  private:
    Rect contentRect_;
    WindowStyle style_;
    WindowBacking backing_;
    std::vector<MemoryWindow*>& windows_;
    std::string title_;
    ViewController* contentViewController_ = nullptr;
    int keyAndFrontCount_ = 0;
    bool isCentered_ = false;
    bool isVisible_ = false;
};

} // namespace platform
