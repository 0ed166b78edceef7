#include "Foundation/Interface.h"
#include "tests/Desktop/TrayTest.h"

#include <gtest/gtest.h>
#include <xcb/res.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

namespace {

using program_test::TrayTest;
using program_test::wroteMessage;
using testing_support::ChildProcess;
using testing_support::waitUntil;

/// Counts a message in a growing log without reading any of it twice.
class MessageCounter {
  public:
    explicit MessageCounter(std::string_view message) : message_(message) {}

    std::size_t count(std::string_view log) {
        for (std::size_t at = log.find(message_, position_); at != std::string_view::npos;
             at = log.find(message_, position_)) {
            ++count_;
            position_ = at + message_.size();
        }
        if (log.size() > message_.size()) {
            position_ = std::max(position_, log.size() - message_.size());
        }
        return count_;
    }

  private:
    std::string_view message_;
    std::size_t position_ = 0;
    std::size_t count_ = 0;
};

/// The number of resources that an X server keeps for all its clients.
class ServerResources : foundation::Pinned {
  public:
    explicit ServerResources(const std::string& display)
        : connection_(xcb_connect(display.c_str(), nullptr)) {}

    ~ServerResources() { xcb_disconnect(connection_); }

    [[nodiscard]] std::size_t count() const {
        const Reply<xcb_res_query_clients_reply_t> clients(
            xcb_res_query_clients_reply(connection_, xcb_res_query_clients(connection_), nullptr));
        EXPECT_TRUE(clients);
        std::size_t count = 0;
        for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
             xcb_res_client_next(&client)) {
            const Reply<xcb_res_query_client_resources_reply_t> resources(
                xcb_res_query_client_resources_reply(
                    connection_,
                    xcb_res_query_client_resources(connection_, client.data->resource_base),
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

  private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); } // NOLINT(*-no-malloc)
    };

    template <typename Type>
    using Reply = std::unique_ptr<Type, Free>;

    xcb_connection_t* connection_;
};

/// What the kernel and the X server keep for the program.
struct Holdings {
    /// Private dirty memory: whether clean pages are shared depends on what else is running.
    std::int64_t writtenKilobytes = 0;
    std::int64_t fileDescriptors = 0;
    std::size_t serverResources = 0;
};

class SoakTests : public TrayTest {
  protected:
    Holdings holdings() {
        const std::filesystem::path folder = "/proc/" + std::to_string(program_->id());
        Holdings holdings;
        std::ifstream rollup(folder / "smaps_rollup");
        for (std::string line; std::getline(rollup, line);) {
            if (line.starts_with("Private_Dirty:") || line.starts_with("Swap:")) {
                holdings.writtenKilobytes += std::stoll(line.substr(line.find(':') + 1));
            }
        }
        holdings.fileDescriptors = std::distance(std::filesystem::directory_iterator(folder / "fd"),
                                                 std::filesystem::directory_iterator());
        holdings.serverResources = resources_.count();
        return holdings;
    }

    /// Converts back to back.
    void convertTimes(std::size_t times) {
        constexpr std::size_t timesPerOwner = 100;
        for (std::size_t i = 0; i < times; ++i) {
            if (i % timesPerOwner ==
                0) { // Reading another program's clipboard takes more than reading our own.
                isLarge_ = !isLarge_;
                owner_ = isLarge_ ? startOwner({"normal", "--size", "100000"})
                                  : startOwner({"normal", "--text", "- tea\n- cake\n- jam"});
            }
            creditedSeconds_ += isLarge_ ? 300 : 30;
            ++conversionCount_;
            pressShortcut();
            ASSERT_TRUE(waitUntil([this] {
                return wrote_.count(program_->standardError()) >= conversionCount_;
            })) << "conversion "
                << conversionCount_ << " did not come; the log ends:\n"
                << endOfLog();
        }
    }

    [[nodiscard]] std::string endOfLog() {
        constexpr std::size_t size = 4000;
        const std::string& log = program_->standardError();
        return log.substr(log.size() - std::min(log.size(), size));
    }

    ServerResources resources_{session_.display()};
    std::unique_ptr<ChildProcess> owner_;
    MessageCounter wrote_{wroteMessage};
    std::size_t conversionCount_ = 0;
    bool isLarge_ = false;
    double creditedSeconds_ = 0;
};

TEST_F(SoakTests, TenThousandConversionsLeaveNothingBehind) {
    constexpr bool isSanitized = PASTEWISE_IS_SANITIZED;
    constexpr std::size_t warmUpCount = 1000;
    constexpr std::size_t count = isSanitized ? 1000 : 10'000;
    startProgramInTray();
    convertTimes(warmUpCount);
    ASSERT_TRUE(waitForEndOfFlash());
    const Holdings before = holdings();
    convertTimes(count);
    ASSERT_TRUE(waitForEndOfFlash());
    const Holdings after = holdings();

    EXPECT_GT(before.writtenKilobytes, 0);
    EXPECT_EQ(after.fileDescriptors, before.fileDescriptors);
    EXPECT_EQ(after.serverResources, before.serverResources);
    if constexpr (!isSanitized) { // The sanitizer delays freeing memory.
        // A leak of a hundred bytes per conversion would be a megabyte.
        EXPECT_LT(after.writtenKilobytes - before.writtenKilobytes, 1024);
    }
    RecordProperty("kilobytesBefore", std::to_string(before.writtenKilobytes));
    RecordProperty("kilobytesAfter", std::to_string(after.writtenKilobytes));
    EXPECT_EQ(conversionCount_, warmUpCount + count);
    EXPECT_TRUE(waitUntil([this] {
        const auto stored = settings();
        return stored && stored->savedSeconds() == creditedSeconds_;
    }));
}

} // namespace
