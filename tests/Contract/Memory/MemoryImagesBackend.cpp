#include "Platform/Memory/MemoryImages.h"
#include "tests/Contract/ImagesContract.h"

namespace contract {

INSTANTIATE_TEST_SUITE_P(Memory,
                         ImagesContract,
                         (backend<platform::Images, platform::MemoryImages>("Memory")),
                         nameOfBackend<platform::Images>);

} // namespace contract
