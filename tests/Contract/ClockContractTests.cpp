#include "tests/Contract/ClockContract.h"
#include "tests/Support/WaitUntil.h"

namespace contract {

using foundation::Date;

TEST_P(ClockContract, GoesOn) {
    const Date begin = backend_->clock().now();
    EXPECT_TRUE(testing_support::waitUntil([&] { return backend_->clock().now() > begin; },
                                           testing_support::patience,
                                           [&] { backend_->pass(); }));
}

} // namespace contract
