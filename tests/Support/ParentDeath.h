#pragma once

#include <sys/types.h>

namespace testing_support {

/// Has this process killed when its parent ends, as far as the system can; does not return where
/// that parent has ended already. For a child between fork and exec.
void endWithParent(pid_t parent);

} // namespace testing_support
