#pragma once

#include "tests/Platform/Linux/Tray/TrayDesktop.h"

#include <gtest/gtest.h>

namespace tray_test {

/// For tests of a status bar on a desktop of its own.
class TrayTest : public testing::Test, protected TrayDesktop {};

} // namespace tray_test
