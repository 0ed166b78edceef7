#include "tests/Support/PrivateXServer.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace {

/// Starts an X server with a home folder of its own before GNUstep makes an application or reads
/// settings.
class GnustepEnvironment final : public testing::Environment {
  public:
    void SetUp() override {
        const testing_support::PrivateXServer& server = server_.emplace();
        server.adoptEnvironment();
        @autoreleasepool {
            writeBelow(server.environment().at("HOME"));
        }
    }

    void TearDown() override { server_.reset(); }

  private:
    /// GNUstep takes the home folder from the user database and ignores the environment.
    static void writeBelow(const std::string& home) {
        NSString* const folder = [NSString stringWithUTF8String:home.c_str()];
        NSMutableDictionary* const configuration = [GNUstepConfig(nil) mutableCopy];
        configuration[@"GNUSTEP_USER_CONFIG_FILE"] = @"";
        for (NSString* entry in @[ @"GNUSTEP_USER_DEFAULTS_DIR", @"GNUSTEP_USER_DIR_LIBRARY" ]) {
            configuration[entry] = [folder stringByAppendingPathComponent:entry];
        }
        GNUstepConfig(configuration);
        tellOtherPrograms(configuration, home + "/GNUstep.conf");
    }

    /// An application starts a program that lists the services.
    static void tellOtherPrograms(NSDictionary* configuration, const std::string& path) {
        std::ofstream file(path);
        for (NSString* entry in configuration) {
            file << entry.UTF8String << '=' << [configuration[entry] UTF8String] << '\n';
        }
        setenv("GNUSTEP_CONFIG_FILE", path.c_str(), 1);
        // GNUstep passes on the environment of its start, which was another one.
        std::array arguments{program_invocation_name, static_cast<char*>(nullptr)};
        GSInitializeProcess(1, arguments.data(), environ);
    }

    std::optional<testing_support::PrivateXServer> server_;
};

const auto* const environment =
    testing::AddGlobalTestEnvironment(std::make_unique<GnustepEnvironment>().release());

} // namespace
