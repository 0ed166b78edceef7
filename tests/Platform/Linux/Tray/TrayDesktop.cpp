#include "tests/Platform/Linux/Tray/TrayDesktop.h"

#include "Platform/Linux/X11/X11TrayManagerSelection.h"
#include "tests/Platform/Linux/Tray/StatusGlyph.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

namespace tray_test {

namespace {

const QString busName = "tray-test";

} // namespace

TrayDesktop::AdoptedEnvironment::AdoptedEnvironment(
    const testing_support::DesktopSession& session) {
    for (const auto& [name, value] : session.environment()) {
        setenv(name.c_str(), value.c_str(), 1);
        if (value.empty()) {
            unsetenv(name.c_str());
        }
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
}

TrayDesktop::TrayDesktop() : statusBar_(managerSelectionMaker()) {
    connectToBus();
    QApplication::setQuitOnLastWindowClosed(false);
}

TrayDesktop::~TrayDesktop() {
    item_.reset();
    QDBusConnection::disconnectFromBus(busName);
}

void TrayDesktop::connectToBus() {
    QDBusConnection::disconnectFromBus(busName);
    statusBar_.setBus(
        QDBusConnection::connectToBus(QString::fromStdString(session_.busAddress()), busName));
}

bool TrayDesktop::turnUntil(const std::function<bool()>& condition,
                            std::chrono::milliseconds limit) {
    return testing_support::waitUntil(condition, limit, [] { QApplication::processEvents(); });
}

void TrayDesktop::makeItem(const std::string& glyph) {
    item_ = statusBar_.makeStatusItem(platform::StatusBar::variableLength);
    item_->button()->setImage(picture(glyph));
    item_->button()->setImagePosition(platform::StatusBarButton::ImagePosition::imageOnly);
    item_->setMenu(sample_.menu);
}

std::shared_ptr<platform::Image> TrayDesktop::picture(const std::string& glyph) {
    auto image = drawGlyph(images_, glyph);
    image->setTemplate(true);
    return image;
}

platform::TrayManagerSelectionMaker TrayDesktop::managerSelectionMaker() {
    return [this](std::function<void()> didChange) {
        return platform::X11TrayManagerSelection::open(eventLoop_, std::move(didChange));
    };
}

void TrayDesktop::startHost(const std::vector<std::string>& options) {
    host_.reset();
    host_ = std::make_unique<TrayHostProgram>(session_.environment(), options);
}

nlohmann::json TrayDesktop::ask(const std::string& command) {
    const std::string event = command.substr(0, command.find(' '));
    const std::size_t before = host_->count(event);
    host_->send(command);
    EXPECT_TRUE(turnUntil([&] { return host_->count(event) > before; })) << command;
    return host_->last(event);
}

} // namespace tray_test
