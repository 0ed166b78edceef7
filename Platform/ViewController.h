#pragma once

#include "Foundation/Interface.h"
#include "Platform/View.h"

#include <memory>
#include <utility>

namespace platform {

/// Makes the view that fills a window and hears what happens to it. Main thread only.
class ViewController : public foundation::Interface {
  public:
    /// The controller's view; the first call makes it: loadView(), then viewDidLoad().
    [[nodiscard]] const std::shared_ptr<View>& view() {
        if (!view_) {
            loadView();
            viewDidLoad();
        }
        return view_;
    }

    /// Makes the view and hands it to setView().
    virtual void loadView() = 0;

    virtual void viewDidLoad() {}

    /// For windows: the view is about to be shown, was laid out, is not shown any more.
    virtual void viewWillAppear() {}

    virtual void viewDidLayout() {}

    virtual void viewDidDisappear() {}

  protected:
    void setView(std::shared_ptr<View> view) { view_ = std::move(view); }

  private:
    std::shared_ptr<View> view_;
};

} // namespace platform
