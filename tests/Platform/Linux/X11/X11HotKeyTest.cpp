#include "tests/Platform/Linux/X11/X11HotKeyTest.h"

#include "HotKey/ModifierFlags.h"
#include "tests/Support/ChildProcess.h"

#include <algorithm>
#include <array>
#include <utility>

namespace testing_support {

using hotkey::noErr;

class CountingEventLoop::Watch final : public platform::FileDescriptorWatch {
  public:
    Watch(CountingEventLoop& loop, std::unique_ptr<platform::FileDescriptorWatch> watch)
        : loop_(loop), watch_(std::move(watch)) {
        ++loop_.watchCount_;
    }

    ~Watch() override { --loop_.watchCount_; }

  private:
    CountingEventLoop& loop_;
    std::unique_ptr<platform::FileDescriptorWatch> watch_;
};

std::unique_ptr<platform::FileDescriptorWatch>
CountingEventLoop::watchReadable(int descriptor, std::function<void()> ready) {
    return std::make_unique<Watch>(
        *this, loop_.watchReadable(descriptor, [this, ready = std::move(ready)] {
            ++readyCount_;
            ready();
        }));
}

X11HotKeyTest::X11HotKeyTest()
    : service_(platform::X11EventHotKeyService::open(eventLoop_, mainQueue_, server_->display())) {
    constexpr std::array types{
        hotkey::EventTypeSpec{hotkey::kEventClassKeyboard, hotkey::kEventHotKeyPressed},
        hotkey::EventTypeSpec{hotkey::kEventClassKeyboard, hotkey::kEventHotKeyReleased}};
    hotkey::EventHandlerRef reference;
    EXPECT_EQ(service_->installEventHandler(
                  service_->getEventDispatcherTarget(),
                  [this](auto /*next*/, hotkey::EventRef event, void* /*userData*/) {
                      note(event);
                      return noErr;
                  },
                  types,
                  nullptr,
                  reference),
              noErr);
}

hotkey::OSStatus
X11HotKeyTest::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id) {
    return service_->registerEventHotKey(keyCode,
                                         modifiers,
                                         {.signature = 7, .id = id},
                                         service_->getEventDispatcherTarget(),
                                         0,
                                         reference_);
}

std::vector<std::string> X11HotKeyTest::events() {
    const hotkey::EventHotKeyRef mine = reference_;
    EXPECT_EQ(registerHotKey(keyF1, hotkey::controlKey, 99), noErr);
    keyboard_->tapTogether({KEY_LEFTCTRL, KEY_F1});
    EXPECT_TRUE(
        QtTestLoop::turnUntil([this] { return !events_.empty() && events_.back() == "up 99"; }));
    EXPECT_EQ(service_->unregisterEventHotKey(reference_), noErr);
    reference_ = mine;
    std::erase(events_, "down 99");
    std::erase(events_, "up 99");
    return std::exchange(events_, {});
}

bool X11HotKeyTest::turnUntilEvent(const std::string& event) {
    return QtTestLoop::turnUntil(
        [&] { return std::find(events_.begin(), events_.end(), event) != events_.end(); });
}

void X11HotKeyTest::setLayout(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"setxkbmap", "-display", server_->display()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ChildProcess setxkbmap(command);
    ASSERT_EQ(setxkbmap.waitForExit(), 0) << setxkbmap.standardError();
}

void X11HotKeyTest::note(hotkey::EventRef event) {
    hotkey::EventHotKeyID id;
    static_cast<void>(service_->getEventParameter(
        event, hotkey::kEventParamDirectObject, hotkey::typeEventHotKeyID, sizeof id, &id));
    const bool isPress = service_->getEventKind(event) == hotkey::kEventHotKeyPressed;
    events_.push_back((isPress ? "down " : "up ") + std::to_string(id.id));
    if (onEvent_) {
        onEvent_(events_.back());
    }
}

} // namespace testing_support
