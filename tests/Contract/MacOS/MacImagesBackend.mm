#import "Platform/MacOS/MacImages.h"
#include "tests/Contract/ImagesContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <functional>
#include <memory>
#include <string_view>
#include <utility>

namespace contract {

namespace {

class MacImagesOnALoop final : public platform::Images {
  public:
    [[nodiscard]] std::shared_ptr<platform::Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) override {
        return images_.systemSymbol(name, accessibilityDescription);
    }

    [[nodiscard]] std::shared_ptr<platform::Image>
    draw(platform::Size size, std::function<void(platform::Canvas&)> draw) override {
        return images_.draw(size, std::move(draw));
    }

  private:
    testing_support::AppKitLoop loop_;
    platform::MacImages images_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         ImagesContract,
                         (backend<platform::Images, MacImagesOnALoop>("Mac")),
                         nameOfBackend<platform::Images>);

} // namespace contract
