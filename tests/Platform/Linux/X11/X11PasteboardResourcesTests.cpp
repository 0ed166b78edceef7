#include "Platform/Linux/X11/X11Connection.h"
#include "tests/Desktop/GeneratedText.h"
#include "tests/Platform/Linux/X11/X11ClipboardTest.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Makes AddressSanitizer release freed memory early, so that growth means a leak.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}

namespace {

std::ptrdiff_t descriptorCount() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

std::size_t residentBytes() {
    std::ifstream statm("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    statm >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

class X11PasteboardResourcesTests : public testing_support::X11ClipboardTest {
  protected:
    /// The number of resources of all kinds that the server holds for all of its clients.
    [[nodiscard]] std::size_t serverResourceCount() const {
        const auto connection = platform::X11Connection::open(server_->display());
        const platform::XcbPointer<xcb_res_query_clients_reply_t> clients(
            xcb_res_query_clients_reply(
                connection->get(), xcb_res_query_clients(connection->get()), nullptr));
        EXPECT_TRUE(clients);
        std::size_t count = 0;
        for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
             xcb_res_client_next(&client)) {
            const platform::XcbPointer<xcb_res_query_client_resources_reply_t> resources(
                xcb_res_query_client_resources_reply(
                    connection->get(),
                    xcb_res_query_client_resources(connection->get(), client.data->resource_base),
                    nullptr));
            EXPECT_TRUE(resources);
            for (auto type = xcb_res_query_client_resources_types_iterator(resources.get());
                 type.rem > 0;
                 xcb_res_type_next(&type)) {
                count += type.data->count;
            }
        }
        return count;
    }

    void setAndTurn(const std::string& text) {
        ASSERT_TRUE(convert(text, text));
        QCoreApplication::processEvents();
    }
};

TEST_F(X11PasteboardResourcesTests, LeaksNothingInAThousandConversions) {
    const std::string text = testing_support::generatedText(65'536);
    open();
    for (int i = 0; i < 50; ++i) {
        setAndTurn(text);
    }
    ASSERT_EQ(readElsewhere("UTF8_STRING"), text);
    const auto descriptorsBefore = descriptorCount();
    const auto resourcesBefore = serverResourceCount();
    const auto memoryBefore = residentBytes();
    for (int i = 0; i < 1000; ++i) {
        setAndTurn(text);
    }
    EXPECT_EQ(descriptorCount(), descriptorsBefore);
    EXPECT_EQ(serverResourceCount(), resourcesBefore);
    // All texts together would take 125 MB.
    EXPECT_LT(residentBytes(), memoryBefore + std::size_t{10} * 1024 * 1024);
}

TEST_F(X11PasteboardResourcesTests, LeaksNothingInAThousandReads) {
    const Program owner = startOwner({"normal", "--size", "65536", "--chunk", "65000"});
    open();
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(readString().has_value());
        QCoreApplication::processEvents();
    }
    const auto descriptorsBefore = descriptorCount();
    const auto resourcesBefore = serverResourceCount();
    const auto memoryBefore = residentBytes();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_TRUE(readString().has_value());
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(descriptorCount(), descriptorsBefore);
    EXPECT_EQ(serverResourceCount(), resourcesBefore);
    EXPECT_LT(residentBytes(), memoryBefore + std::size_t{10} * 1024 * 1024);
}

TEST_F(X11PasteboardResourcesTests, KeepsOnlyAFewWindowsForUnresponsiveOwners) {
    limits_.silence = std::chrono::milliseconds(20);
    const Program owner = startOwner({"hang"});
    open();
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(readString().has_value());
    }
    const auto resourcesBefore = serverResourceCount();
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(readString().has_value());
    }
    EXPECT_EQ(serverResourceCount(), resourcesBefore);
}

} // namespace
