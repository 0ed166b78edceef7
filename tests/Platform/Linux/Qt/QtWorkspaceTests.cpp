#include "Platform/Linux/Qt/QtWorkspace.h"

#include <gtest/gtest.h>

namespace {

TEST(QtWorkspaceTests, RefusesAUrlWithoutASensibleHost) {
    EXPECT_FALSE(platform::QtWorkspace().openURL("http://[broken"));
}

} // namespace
