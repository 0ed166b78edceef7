#include "Platform/Memory/MemoryImages.h"
#include "Platform/Memory/MemoryStatusBar.h"
#include "tests/Contract/StatusBarContract.h"

#include <functional>
#include <memory>
#include <string>

namespace contract {

namespace {

class MemoryStatusBarBackend final : public StatusBarBackend {
  public:
    std::unique_ptr<platform::StatusItem>
    makeItem(const std::shared_ptr<platform::Menu>& menu) override {
        auto item = bar_.makeStatusItem(platform::StatusBar::variableLength);
        item->button()->setImage(images_.draw({18, 18}, [](platform::Canvas&) {}));
        item->setMenu(menu);
        return item;
    }

    void open() override { bar_.item()->click(); }

    std::string firstTitle() override { return bar_.item()->menu()->items().front()->title(); }

    void choose(const std::string& title) override {
        static_cast<void>(bar_.item()->choose(title));
    }

    [[nodiscard]] bool isShown() override { return bar_.item() != nullptr; }

    bool turnUntil(const std::function<bool()>& condition) override { return condition(); }

  private:
    platform::MemoryStatusBar bar_;
    platform::MemoryImages images_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         StatusBarContract,
                         (backend<StatusBarBackend, MemoryStatusBarBackend>("Memory")),
                         nameOfBackend<StatusBarBackend>);

} // namespace contract
