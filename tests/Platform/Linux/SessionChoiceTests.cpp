#include "Platform/Linux/SessionChoice.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace {

using platform::Choice;
using platform::NoPlatform;
using platform::Session;

struct Row {
    std::string name;
    Session session;
    std::string qtPlugin; ///< Empty if there is no platform.
    std::string sentence; ///< The limitation or the reason.
};

class SessionChoiceTests : public testing::TestWithParam<Row> {};

TEST_P(SessionChoiceTests, DependsOnTheSessionAlone) {
    const auto chosen = platform::choose(GetParam().session);
    if (GetParam().qtPlugin.empty()) {
        ASSERT_TRUE(std::holds_alternative<NoPlatform>(chosen));
        EXPECT_EQ(std::get<NoPlatform>(chosen).reason, GetParam().sentence);
    } else {
        ASSERT_TRUE(std::holds_alternative<Choice>(chosen));
        EXPECT_EQ(std::get<Choice>(chosen).qtPlugin, GetParam().qtPlugin);
        EXPECT_EQ(std::get<Choice>(chosen).limitation, GetParam().sentence);
    }
}

const std::string xWaylandLimitation =
    "In a Wayland session the shortcut works only while an X11 window is in front";
const std::string noDisplay = "there is no X display: DISPLAY is not set";
const std::string noServer = "the X display :9 does not answer";

INSTANTIATE_TEST_SUITE_P(
    Table,
    SessionChoiceTests,
    testing::Values(
        Row{"X11", {":0", true, false, ""}, "xcb", ""},
        Row{"X11WithTheUsersQtPlugin", {":0", true, false, "offscreen"}, "offscreen", ""},
        Row{"XWayland", {":0", true, true, ""}, "xcb", xWaylandLimitation},
        Row{"WaylandAlone", {"", false, true, ""}, "", noDisplay},
        Row{"NoDisplay", {"", false, false, ""}, "", noDisplay},
        Row{"NoServer", {":9", false, false, ""}, "", noServer},
        Row{"WaylandAndNoServer", {":9", false, true, ""}, "", noServer}),
    [](const auto& row) { return row.param.name; });

} // namespace
