#pragma once

namespace testing_support {

/// Makes the process an ordinary user for good, if it is not one: to the superuser no file is
/// closed. For child processes of a test. Returns whether it is one now.
bool becomeUnprivileged();

} // namespace testing_support
