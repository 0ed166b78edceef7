#include "Platform/Posix/PosixServices.h"
#include "tests/Contract/StandardOutputContract.h"
#include "tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <vector>

namespace contract {

namespace {

class FileStandardOutputBackend final : public StandardOutputBackend {
  public:
    FileStandardOutputBackend() = default;

    ~FileStandardOutputBackend() override { close(descriptor_); }

    platform::StandardOutput& output() override { return output_; }

    std::vector<std::string> lines() override {
        std::vector<std::string> lines;
        std::ifstream file(path_);
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

  private:
    testing_support::TemporaryFolder folder_;
    std::string path_ = (folder_.path() / "output").string();
    int descriptor_ = open(path_.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    platform::FileStandardOutput output_{descriptor_};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Posix,
                         StandardOutputContract,
                         (backend<StandardOutputBackend, FileStandardOutputBackend>("File")),
                         nameOfBackend<StandardOutputBackend>);

} // namespace contract
