#include "Pastewise/MenuBarHostingController.h"

#include "Foundation/FatalError.h"
#include "Platform/Geometry.h"

#include <array>
#include <charconv>
#include <limits>
#include <string>
#include <utility>

namespace pastewise {

namespace {

/// The number with as many digits as keep its value, the same in every language: 0, 12.5.
void append(std::string& text, double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(),
                                   digits.data() + digits.size(),
                                   number,
                                   std::chars_format::general,
                                   std::numeric_limits<double>::max_digits10)
                         .ptr;
    text.append(digits.data(), end);
}

/// "{{x, y}, {width, height}}".
std::string description(platform::Rect rect) {
    std::string text = "{{";
    append(text, rect.origin.x);
    text += ", ";
    append(text, rect.origin.y);
    text += "}, {";
    append(text, rect.size.width);
    text += ", ";
    append(text, rect.size.height);
    text += "}}";
    return text;
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
