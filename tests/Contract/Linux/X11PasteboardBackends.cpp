#include "tests/Contract/Linux/PairOfX11Pasteboards.h"
#include "tests/Contract/Linux/SingleX11Pasteboard.h"
#include "tests/Contract/PasteboardContract.h"

namespace contract {

using platform::Pasteboard;
using testing_support::PairOfX11Pasteboards;
using testing_support::SingleX11Pasteboard;

INSTANTIATE_TEST_SUITE_P(Linux,
                         PasteboardContract,
                         (backend<Pasteboard, SingleX11Pasteboard>("X11")),
                         nameOfBackend<Pasteboard>);

INSTANTIATE_TEST_SUITE_P(LinuxWithAnotherProgram,
                         PasteboardContract,
                         (backend<Pasteboard, PairOfX11Pasteboards>("X11InTwoProcesses")),
                         nameOfBackend<Pasteboard>);

} // namespace contract
