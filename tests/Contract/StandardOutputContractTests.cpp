#include "Platform/Memory/MemoryApplication.h"
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

using Lines = std::vector<std::string>;

TEST_P(StandardOutputContract, ALineIsReadableWhenTheCallReturns) {
    backend_->output().writeLine("first");
    EXPECT_EQ(backend_->lines(), (Lines{"first"}));
    backend_->output().writeLine("second…");
    EXPECT_EQ(backend_->lines(), (Lines{"first", "second…"}));
}

TEST_P(StandardOutputContract, AnEmptyTextIsAnEmptyLine) {
    backend_->output().writeLine("");
    EXPECT_EQ(backend_->lines(), (Lines{""}));
}

} // namespace contract
