#pragma once

#include "Foundation/Logger.h"
#include "Platform/Views.h"

#include <memory>

namespace pastewise {

class AppState;

/// Puts a declarative view into the menu bar's interface. Without one it shows an empty view and
/// logs an error. Main thread only.
///
/// The hosting view is laid out when it is loaded, after each layout of the window and before it is
/// shown, because its content may change size in between.
class MenuBarHostingController final : public platform::ViewController {
  public:
    /// `hostingView` may be null. The controller does not own the others.
    MenuBarHostingController(std::shared_ptr<platform::HostingView> hostingView,
                             AppState& appState,
                             platform::Toolkit& toolkit,
                             const foundation::LoggerFactory& loggers);

    /// The controller cannot be made from an archive or a nib: both are fatal errors.
    [[noreturn]] static void initWithCoder();
    [[noreturn]] static void initWithNibName();

    /// The state that the hosted content shows.
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
