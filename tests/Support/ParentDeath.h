#pragma once

#include <sys/types.h>

namespace testing_support {

/// Kills this process when its parent ends, if the system can; does not return if the parent has
/// already ended. For a child between fork and exec.
void endWithParent(pid_t parent);

} // namespace testing_support
