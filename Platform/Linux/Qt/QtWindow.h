#pragma once

#include "Platform/Views.h"

#include <memory>
#include <string>

class QWidget;

namespace platform {

/// A plain top-level widget, so Escape does not close it. Its content is as large as was asked, or
/// larger where that is too small for the views in it.
class QtWindow final : public Window {
  public:
    QtWindow(Rect contentRect, WindowStyle style);
    ~QtWindow() override;

    void setTitle(std::string title) override;
    void center() override;
    void setContentViewController(ViewController& controller) override;
    void makeKeyAndOrderFront() override;
    void close() override;
    [[nodiscard]] bool isVisible() const override;

  private:
    class Frame;

    std::unique_ptr<Frame> frame_;
};

} // namespace platform
