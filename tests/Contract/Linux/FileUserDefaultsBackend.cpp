#include "Foundation/Logger.h"
#include "Platform/Linux/Store/FileUserDefaults.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Contract/UserDefaultsContract.h"
#include "tests/Support/TemporaryFolder.h"

#include <memory>

namespace contract {

namespace {

class FileUserDefaultsBackend final : public UserDefaultsBackend {
  public:
    FileUserDefaultsBackend() { open(); }

    platform::UserDefaults& defaults() override { return *defaults_; }

    void restart() override { open(); }

  private:
    void open() {
        queue_.drain();
        defaults_.reset();
        defaults_ = std::make_unique<platform::FileUserDefaults>(path_, queue_, disk_, loggers_);
    }

    testing_support::TemporaryFolder folder_;
    const QString path_ = QString::fromStdString(folder_.path() / "settings.plist");
    platform::MemoryMainQueue queue_;
    platform::MemoryLogSink log_;
    foundation::LoggerFactory loggers_{log_, "com.app.pastewise"};
    QThreadPool disk_;
    std::unique_ptr<platform::FileUserDefaults> defaults_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         UserDefaultsContract,
                         (backend<UserDefaultsBackend, FileUserDefaultsBackend>("File")),
                         nameOfBackend<UserDefaultsBackend>);

} // namespace contract
