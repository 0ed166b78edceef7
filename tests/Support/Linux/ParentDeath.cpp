#include "tests/Support/ParentDeath.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

namespace testing_support {

void endWithParent(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(126);
    }
}

} // namespace testing_support
