#include "Platform/Linux/Tray/TrayImages.h"
#include "tests/Contract/ImagesContract.h"

namespace contract {

INSTANTIATE_TEST_SUITE_P(Linux,
                         ImagesContract,
                         (backend<platform::Images, platform::TrayImages>("Tray")),
                         nameOfBackend<platform::Images>);

} // namespace contract
