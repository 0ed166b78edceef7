#include "Pastewise/MenuBarHostingController.h"

#include "Foundation/FatalError.h"
#include "Platform/Geometry.h"

#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <utility>

namespace pastewise {

namespace {

/// "{{x, y}, {width, height}}", the numbers without loss and the same in every locale: 0, 12.5.
std::string description(platform::Rect rect) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(std::numeric_limits<double>::max_digits10);
    text << "{{" << rect.origin.x << ", " << rect.origin.y << "}, {" << rect.size.width << ", "
         << rect.size.height << "}}";
    return text.str();
}

} // namespace

MenuBarHostingController::MenuBarHostingController(
    std::shared_ptr<platform::HostingView> hostingView,
    AppState& appState,
    platform::Toolkit& toolkit,
    const foundation::LoggerFactory& loggers)
    : logger_(loggers.logger("MenuBarHostingController")),
      hostingView_(std::move(hostingView)),
      appState_(appState),
      toolkit_(toolkit) {}

void MenuBarHostingController::initWithCoder() {
    foundation::fatalError("init(coder:) has not been implemented");
}

void MenuBarHostingController::initWithNibName() {
    foundation::fatalError("use of the unimplemented initializer init(nibName:bundle:)");
}

void MenuBarHostingController::loadView() {
    logger_.debug("loadView triggered; configuring hosting view");
    if (!hostingView_) {
        logger_.error("Hosting view is nil during loadView");
        setView(toolkit_.makeView({}));
        return;
    }
    hostingView_->setTranslatesAutoresizingMaskIntoConstraints(false);
    setView(hostingView_);
    hostingView_->layoutSubtreeIfNeeded();
    logger_.debug("Hosting view configured with frame: %s",
                  [this] { return description(hostingView_->frame()); });
}

void MenuBarHostingController::viewDidLayout() {
    ViewController::viewDidLayout();
    logger_.debug("MenuBarHostingController viewDidLayout with frame: %s",
                  [this] { return description(view()->frame()); });
    layoutHostingView();
}

void MenuBarHostingController::viewWillAppear() {
    ViewController::viewWillAppear();
    logger_.debug("MenuBarHostingController viewWillAppear");
    layoutHostingView();
}

void MenuBarHostingController::layoutHostingView() {
    if (auto* const hosting = dynamic_cast<platform::HostingView*>(view().get())) {
        hosting->layoutSubtreeIfNeeded();
    }
}

} // namespace pastewise
