#include "Platform/Memory/MemoryPasteboard.h"
#include "tests/Contract/PasteboardContract.h"

namespace contract {

INSTANTIATE_TEST_SUITE_P(Memory,
                         PasteboardContract,
                         (backend<platform::Pasteboard, platform::MemoryPasteboard>("Memory")),
                         nameOfBackend<platform::Pasteboard>);

} // namespace contract
