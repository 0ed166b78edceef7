#include "tests/Support/PanelSession.h"

#include "Platform/Linux/X11/X11Connection.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace testing_support {

namespace {

/// Without a configuration of its own version the panel asks the user for one.
void writeConfiguration(const std::filesystem::path& folder, PanelSession::Appearance appearance) {
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / "xfce4-panel.xml");
    file << R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value=")"
         << (appearance == PanelSession::Appearance::dark ? "true" : "false") << R"("/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="icon-size" type="uint" value="22"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";
    if (!file.flush()) {
        throw std::runtime_error("the panel's configuration cannot be written");
    }
}

/// Whether a host on the bus shows StatusNotifier items.
bool hasStatusNotifierHost(const DesktopSession& desktop) {
    ChildProcess query({"dbus-send",
                        "--session",
                        "--print-reply=literal",
                        "--dest=org.kde.StatusNotifierWatcher",
                        "/StatusNotifierWatcher",
                        "org.freedesktop.DBus.Properties.Get",
                        "string:org.kde.StatusNotifierWatcher",
                        "string:IsStatusNotifierHostRegistered"},
                       {.environment = desktop.environment()});
    return query.waitForExit() == 0 && query.standardOutput().find("true") != std::string::npos;
}

/// Whether a client of the X server shows XEmbed windows.
bool hasTrayManager(const DesktopSession& desktop) {
    const auto connection = platform::X11Connection::open(desktop.display());
    if (!connection) {
        return false;
    }
    const platform::XcbPointer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection->get(),
        xcb_get_selection_owner(connection->get(), connection->atom("_NET_SYSTEM_TRAY_S0")),
        nullptr));
    return reply && reply->owner != XCB_NONE;
}

} // namespace

PanelSession::PanelSession(const DesktopSession& desktop, Appearance appearance)
    : desktop_(desktop) {
    const auto environment = desktop.environment();
    writeConfiguration(environment.at("XDG_CONFIG_HOME") + "/xfce4/xfconf/xfce-perchannel-xml",
                       appearance);
    settingsService_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"/usr/lib/x86_64-linux-gnu/xfce4/xfconf/xfconfd"},
        ChildProcess::Options{.environment = environment});
    start();
}

void PanelSession::start() {
    menuReading_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"dbus-monitor",
                                 "--session",
                                 "type='method_call',interface='com.canonical.dbusmenu',"
                                 "member='GetGroupProperties'"},
        ChildProcess::Options{.environment = desktop_.environment()});
    // The bus greets it before it delivers anything.
    if (!menuReading_->waitForOutput("NameAcquired")) {
        throw std::runtime_error("nobody listens to the bus: " + menuReading_->standardError());
    }
    panel_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"xfce4-panel", "--disable-wm-check"},
        ChildProcess::Options{.environment = desktop_.environment()});
    if (!waitUntil(
            [this] { return hasStatusNotifierHost(desktop_) && hasTrayManager(desktop_); })) {
        throw std::runtime_error("no panel: " + panel_->standardError());
    }
}

void PanelSession::stop() {
    panel_.reset();
    if (!waitUntil(
            [this] { return !hasStatusNotifierHost(desktop_) && !hasTrayManager(desktop_); })) {
        throw std::runtime_error("the tray outlives the panel");
    }
}

} // namespace testing_support
