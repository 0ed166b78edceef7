#include "tests/Contract/StandardOutputContract.h"

#include <string>
#include <vector>

namespace contract {

using Lines = std::vector<std::string>;

TEST_P(StandardOutputContract, ALineIsThereWhenTheCallReturns) {
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
