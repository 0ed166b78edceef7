#include "Foundation/Logger.h"
#include "Platform/Linux/Store/PlistUserDefaults.h"
#include "Platform/Linux/WorkerThread.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Contract/UserDefaultsContract.h"
#include "tests/Support/TemporaryFolder.h"

#include <memory>

namespace contract {

namespace {

class PlistUserDefaultsBackend final : public UserDefaultsBackend {
  public:
    PlistUserDefaultsBackend() { open(); }

    platform::UserDefaults& defaults() override { return *defaults_; }

    void restart() override { open(); }

  private:
    void open() {
        queue_.drain();
        defaults_.reset();
        defaults_ = std::make_unique<platform::PlistUserDefaults>(
            folder_.path() / "settings.plist", queue_, worker_, loggers_);
    }

    testing_support::TemporaryFolder folder_;
    platform::MemoryMainQueue queue_;
    platform::MemoryLogSink log_;
    foundation::LoggerFactory loggers_{log_, "com.app.pastewise"};
    platform::WorkerThread worker_;
    std::unique_ptr<platform::PlistUserDefaults> defaults_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         UserDefaultsContract,
                         (backend<UserDefaultsBackend, PlistUserDefaultsBackend>("Plist")),
                         nameOfBackend<UserDefaultsBackend>);

} // namespace contract
