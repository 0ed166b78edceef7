#include "tests/Support/TemporaryFolder.h"

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

namespace testing_support {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "pastewise-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder could be made");
    }
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace testing_support
