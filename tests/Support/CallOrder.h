#pragma once

#include "Platform/Memory/Journal.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

/// Whether these calls were made once each, in this order, whatever was called between them.
inline testing::AssertionResult madeInOrder(const platform::Journal& journal,
                                            std::initializer_list<std::string_view> calls) {
    const std::vector<std::string> made = journal.only(calls);
    if (made == std::vector<std::string>(calls.begin(), calls.end())) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "made: " << testing::PrintToString(made);
}

} // namespace testing_support
