#include "tests/Contract/StatusBarContract.h"
#include "tests/Platform/Linux/Tray/TrayDesktop.h"

#include <functional>
#include <memory>
#include <string>

namespace contract {

namespace {

/// The tray, with a host in another process.
class TrayStatusBarBackend final : public StatusBarBackend, private tray_test::TrayDesktop {
  public:
    std::unique_ptr<platform::StatusItem>
    makeItem(const std::shared_ptr<platform::Menu>& menu) override {
        startHost();
        auto item = statusBar_.makeStatusItem(platform::StatusBar::variableLength);
        item->button()->setImage(picture("P"));
        item->setMenu(menu);
        EXPECT_TRUE(turnUntil([this] { return host_->showsIcon(); }));
        return item;
    }

    void open() override { ask("menu"); }

    std::string firstTitle() override {
        return ask("layout")["rows"][0]["label"].get<std::string>();
    }

    void choose(const std::string& title) override { ask("choose " + title); }

    [[nodiscard]] bool isShown() override { return host_->count("unregistered") == 0; }

    bool turnUntil(const std::function<bool()>& condition) override {
        return TrayDesktop::turnUntil(condition);
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         StatusBarContract,
                         (backend<StatusBarBackend, TrayStatusBarBackend>("Tray")),
                         nameOfBackend<StatusBarBackend>);

} // namespace contract
