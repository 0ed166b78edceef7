#pragma once

#include "Foundation/Logger.h"
#include "Platform/Views.h"

#include <memory>

namespace pastewise {

class AppState;

/// Places a declared tree of views inside the menu bar's interface. Without one it shows an empty
/// view and says so in the log. Main thread only.
///
/// The hosting view's content is laid out when it is loaded, whenever it was laid out and before it
/// is shown: content that changes its size in between would otherwise be shown with the old one.
class MenuBarHostingController final : public platform::ViewController {
  public:
    /// `hostingView` may be null. The others outlive the controller.
    MenuBarHostingController(std::shared_ptr<platform::HostingView> hostingView,
                             AppState& appState,
                             platform::Toolkit& toolkit,
                             const foundation::LoggerFactory& loggers);

    /// The controller is always made by code: making it from an archive or from a nib is a fatal
    /// error.
    [[noreturn]] static void initWithCoder();
    [[noreturn]] static void initWithNibName();

    /// What the hosted content shows.
    [[nodiscard]] AppState& appState() const { return appState_; }

    void loadView() override;
    void viewDidLayout() override;
    void viewWillAppear() override;

  private:
    void layoutHostingView();

    foundation::Logger logger_;
    std::shared_ptr<platform::HostingView> hostingView_;
    AppState& appState_;
    platform::Toolkit& toolkit_;
};

} // namespace pastewise
