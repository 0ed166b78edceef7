#include "Pastewise/PastewiseApp.h"
#include "Platform/Platform.h"

#include <cstdio>
#include <memory>
#include <variant>

int main(int argc, char** argv) {
    const platform::PlatformOrNot made = platform::makePlatform(argc, argv);
    if (std::holds_alternative<platform::AlreadyRunning>(made)) {
        return 0;
    }
    if (const auto* none = std::get_if<platform::NoPlatform>(&made)) {
        std::fprintf(stderr, "pastewise: %s\n", none->reason.c_str());
        return 1;
    }
    return pastewise::PastewiseApp(*std::get<std::unique_ptr<platform::Platform>>(made)).main();
}
