#pragma once

#import "Platform/MacOS/MacConversions.h"
#import "Platform/MacOS/PWViewController.h"
#include "Platform/Window.h"

namespace platform {

/// A window of the system's, which this object closes at its end. Main thread only.
class MacWindow final : public Window {
  public:
    explicit MacWindow(NSWindow* window) : window_(window) { window.releasedWhenClosed = NO; }

    ~MacWindow() override {
        [window_ close];
        window_.contentViewController = nil;
    }

    void setTitle(std::string title) override { window_.title = nsString(title); }

    void center() override { [window_ center]; }

    void setContentViewController(ViewController& controller) override {
        const NSSize size = [window_ contentRectForFrameRect:window_.frame].size;
        window_.contentViewController = [[PWViewController alloc] initWithController:&controller];
        // The system gave the window the size of the controller's view.
        [window_ setContentSize:size];
    }

    void makeKeyAndOrderFront() override { [window_ makeKeyAndOrderFront:nil]; }

    void close() override { [window_ close]; }

    [[nodiscard]] bool isVisible() const override { return [window_ isVisible]; }

  private:
    NSWindow* const window_;
};

} // namespace platform
