#pragma once

#include "Platform/Views.h"

#include <QGridLayout>
#include <QWidget>
#include <memory>
#include <string>

namespace platform {

/// A top-level widget, so Escape does not close it. Its content has the size asked for, or more if
/// the views in it need more.
class QtWindow final : public QWidget, public Window {
  public:
    QtWindow(Rect contentRect, WindowStyle style);
    ~QtWindow() override;

    void setTitle(std::string title) override;
    void center() override;

    /// To be called once.
    void setContentViewController(ViewController& controller) override;
    void makeKeyAndOrderFront() override;
    void close() override;
    [[nodiscard]] bool isVisible() const override;

  protected:
    bool event(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QGridLayout layout_{this};
    bool isCentered_ = false;
    std::shared_ptr<View> content_;
    ViewController* controller_ = nullptr;
};

/// Brings all visible windows of the program to the front and asks for the keyboard. Main thread
/// only.
void bringAllToFront();

} // namespace platform
