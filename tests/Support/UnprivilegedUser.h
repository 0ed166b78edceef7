#pragma once

namespace testing_support {

/// Drops root privileges for good, since file permissions do not bind the superuser. For child
/// processes of a test. Returns whether the process is unprivileged now.
bool becomeUnprivileged();

} // namespace testing_support
