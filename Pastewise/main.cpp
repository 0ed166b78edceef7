#include "Pastewise/PastewiseApp.h"
#include "Platform/PlatformFactory.h"

#include <cstdio>
#include <memory>
#include <string>
#include <variant>

int main(int argc, char** argv) {
    const platform::PlatformOrReason made = platform::makePlatform(argc, argv);
    if (const auto* reason = std::get_if<std::string>(&made)) {
        std::fprintf(stderr, "pastewise: %s\n", reason->c_str());
        return 1;
    }
    return pastewise::PastewiseApp(*std::get<std::unique_ptr<platform::Platform>>(made)).main();
}
