#include "Platform/Linux/StandardDescriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace platform {

void fillStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // The lowest free number is given out, and those below are taken by now.
            static_cast<void>(open("/dev/null", O_RDWR));
        }
    }
}

} // namespace platform
