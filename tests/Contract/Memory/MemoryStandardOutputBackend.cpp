#include "Platform/Memory/MemoryStandardOutput.h"
#include "tests/Contract/StandardOutputContract.h"

#include <string>
#include <vector>

namespace contract {

namespace {

class MemoryStandardOutputBackend final : public StandardOutputBackend {
  public:
    platform::StandardOutput& output() override { return output_; }

    std::vector<std::string> lines() override { return output_.lines(); }

  private:
    platform::MemoryStandardOutput output_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         StandardOutputContract,
                         (backend<StandardOutputBackend, MemoryStandardOutputBackend>("Memory")),
                         nameOfBackend<StandardOutputBackend>);

} // namespace contract
