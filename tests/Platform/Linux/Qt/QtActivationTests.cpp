#include "Platform/Linux/Qt/QtActivation.h"
#include "tests/Platform/Linux/Qt/FormWindow.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>

namespace {

TEST(QtActivationTests, LeavesHiddenWindowsHidden) {
    const testing_support::QtDesktop desktop;
    const FormWindow form;
    platform::bringAllToFront();
    testing_support::QtTestLoop::turn();
    EXPECT_FALSE(form.window->isVisible());
}

} // namespace
