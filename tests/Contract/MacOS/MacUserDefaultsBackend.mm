#import "Platform/MacOS/MacUserDefaults.h"
#include "tests/Contract/UserDefaultsContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <memory>

namespace contract {

namespace {

/// Settings of the test's own, separate from any program's.
class MacUserDefaultsBackend final : public UserDefaultsBackend {
  public:
    MacUserDefaultsBackend() { open(); }

    ~MacUserDefaultsBackend() override {
        [nsDefaults_ removePersistentDomainForName:name_];
        [nsDefaults_ synchronize];
    }

    platform::UserDefaults& defaults() override { return *defaults_; }

    void restart() override {
        [nsDefaults_ synchronize];
        open();
    }

  private:
    void open() {
        nsDefaults_ = [[NSUserDefaults alloc] initWithSuiteName:name_];
        defaults_ = std::make_unique<platform::MacUserDefaults>(nsDefaults_);
    }

    testing_support::AppKitLoop loop_;
    NSString* const name_ = [@"pastewise-test-"
        stringByAppendingString:[[NSProcessInfo processInfo] globallyUniqueString]];
    NSUserDefaults* nsDefaults_ = nil;
    std::unique_ptr<platform::MacUserDefaults> defaults_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         UserDefaultsContract,
                         (backend<UserDefaultsBackend, MacUserDefaultsBackend>("Mac")),
                         nameOfBackend<UserDefaultsBackend>);

} // namespace contract
