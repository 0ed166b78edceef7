#include "Platform/Memory/MemoryUserDefaults.h"
#include "tests/Contract/UserDefaultsContract.h"

namespace contract {

namespace {

/// Lasts as long as the test, over restarts too.
class MemoryUserDefaultsBackend final : public UserDefaultsBackend {
  public:
    platform::UserDefaults& defaults() override { return defaults_; }

    void restart() override {}

  private:
    platform::MemoryUserDefaults defaults_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         UserDefaultsContract,
                         (backend<UserDefaultsBackend, MemoryUserDefaultsBackend>("Memory")),
                         nameOfBackend<UserDefaultsBackend>);

} // namespace contract
