#include "Pastewise/PreferencesViewController.h"

#include "Foundation/FatalError.h"
#include "Foundation/Value.h"
#include "HotKey/Key.h"
#include "HotKey/ModifierFlags.h"
#include "Pastewise/SettingsKeys.h"
#include "Pastewise/ShortcutManager.h"
#include "Platform/Geometry.h"
#include "Platform/MainQueue.h"
#include "Platform/Views.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace pastewise {

namespace {

using namespace std::chrono_literals;
using hotkey::ModifierFlags;
using platform::FontWeight;
using platform::LayoutConstraint;
using platform::TextAlignment;
using platform::TextColor;

using Anchor = LayoutConstraint::Anchor;

constexpr std::string_view noShortcutText = "No shortcut set";

/// What the window shows in a state.
struct StateTexts {
    std::string_view buttonTitle;
    std::string_view status;
};

StateTexts textsFor(RecordingState state) {
    switch (state) {
    case RecordingState::ready:
        return {"Record Shortcut", "Ready to record - Click 'Record Shortcut' to begin"};
    case RecordingState::waiting:
        return {"Stop Recording", "Waiting for input - Press any key combination"};
    case RecordingState::recording:
        return {"Stop Recording", "Recording... Press your desired shortcut now"};
    case RecordingState::completed:
        return {"Record New Shortcut", "Shortcut recorded successfully!"};
    }
    foundation::fatalError("a recording is in an unknown state");
}

struct LetterKeyName {
    std::uint16_t keyCode;
    char letter;
};

constexpr std::array<LetterKeyName, 26> letterKeyNames{{
    {0, 'A'},  {11, 'B'}, {8, 'C'},  {2, 'D'},  {14, 'E'}, {3, 'F'},  {5, 'G'},
    {4, 'H'},  {34, 'I'}, {38, 'J'}, {40, 'K'}, {37, 'L'}, {46, 'M'}, {45, 'N'},
    {31, 'O'}, {35, 'P'}, {12, 'Q'}, {15, 'R'}, {1, 'S'},  {17, 'T'}, {32, 'U'},
    {9, 'V'},  {13, 'W'}, {7, 'X'},  {16, 'Y'}, {6, 'Z'},
}};

struct ModifierSymbol {
    ModifierFlags flag;
    std::string_view symbol;
};

constexpr std::array<ModifierSymbol, 4> modifierSymbols{{
    {ModifierFlags::command, "\u2318"},
    {ModifierFlags::option, "\u2325"},
    {ModifierFlags::shift, "\u21E7"},
    {ModifierFlags::control, "\u2303"},
}};

constexpr std::uint64_t largestKeyCode = std::numeric_limits<std::uint16_t>::max();

/// The modifier flags that do not depend on the keyboard.
constexpr std::uint64_t deviceIndependentFlagsMask = 0xFFFF0000;

/// The saved shortcut as the window shows it; none if there is none or it has the wrong form.
std::optional<std::string> savedShortcutText(const platform::UserDefaults& userDefaults) {
    const auto saved = userDefaults.dictionaryForKey(userDefinedShortcutKey);
    if (!saved) {
        return std::nullopt;
    }
    const auto keyCodeEntry = saved->find(shortcutKeyCodeEntry);
    const auto modifiersEntry = saved->find(shortcutModifiersEntry);
    if (keyCodeEntry == saved->end() || modifiersEntry == saved->end()) {
        return std::nullopt;
    }
    const auto keyCode = foundation::exactUint64Value(keyCodeEntry->second);
    const auto modifiers = foundation::exactUint64Value(modifiersEntry->second);
    if (!keyCode || *keyCode > largestKeyCode || !modifiers) {
        return std::nullopt;
    }
    return PreferencesViewController::shortcutDisplayString(*keyCode, *modifiers);
}

/// Constraints that make the view fill its container.
std::vector<LayoutConstraint> pinToEdges(const std::shared_ptr<platform::View>& view,
                                         const std::shared_ptr<platform::View>& container) {
    std::vector<LayoutConstraint> constraints;
    for (const Anchor edge : {Anchor::top, Anchor::leading, Anchor::trailing, Anchor::bottom}) {
        constraints.push_back(LayoutConstraint::equal(view, edge, container));
    }
    return constraints;
}

} // namespace

PreferencesViewController::PreferencesViewController(platform::Toolkit& toolkit,
                                                     platform::KeyDownMonitors& keyDownMonitors,
                                                     platform::MainQueue& mainQueue,
                                                     platform::UserDefaults& userDefaults,
                                                     ShortcutManager& shortcutManager)
    : toolkit_(toolkit),
      keyDownMonitors_(keyDownMonitors),
      mainQueue_(mainQueue),
      userDefaults_(userDefaults),
      shortcutManager_(shortcutManager) {}

void PreferencesViewController::loadView() {
    setView(toolkit_.makeView({{0, 0}, {400, 200}}));
}

void PreferencesViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    setupUI();
    updateShortcutDisplay();
    updateUI();
}

void PreferencesViewController::viewDidDisappear() {
    ViewController::viewDidDisappear();
    stopRecording();
    enter(RecordingState::ready);
}

void PreferencesViewController::toggleRecording() {
    if (currentState_ == RecordingState::ready || currentState_ == RecordingState::completed) {
        enter(RecordingState::waiting);
        startRecording();
    } else {
        enter(RecordingState::ready);
        stopRecording();
    }
}

void PreferencesViewController::resetShortcut() {
    shortcutManager_.clearShortcut();
    updateShortcutDisplay();
    stopRecording();
    enter(RecordingState::ready);
}

std::string PreferencesViewController::shortcutDisplayString(std::uint64_t keyCode,
                                                             std::uint64_t modifiers) {
    if (keyCode > largestKeyCode) {
        foundation::fatalError("the key code of a shortcut has more than 16 bits");
    }
    std::string text;
    for (const ModifierSymbol& modifier : modifierSymbols) {
        if (ModifierFlags{modifiers}.contains(modifier.flag)) {
            text += modifier.symbol;
        }
    }
    const auto* const name =
        std::find_if(letterKeyNames.begin(), letterKeyNames.end(), [keyCode](const auto& one) {
            return one.keyCode == keyCode;
        });
    if (name != letterKeyNames.end()) {
        text += name->letter;
    }
    return text;
}

const std::shared_ptr<platform::Label>& PreferencesViewController::statusLabel() {
    if (!statusLabel_) {
        statusLabel_ = toolkit_.makeWrappingLabel("");
        statusLabel_->setEditable(false);
        statusLabel_->setSelectable(false);
        statusLabel_->setTextColor(TextColor::secondaryLabel);
        statusLabel_->setFont({.size = 11});
        statusLabel_->setAlignment(TextAlignment::center);
        statusLabel_->setMaximumNumberOfLines(2);
        statusLabel_->setTranslatesAutoresizingMaskIntoConstraints(false);
    }
    return statusLabel_;
}

const std::shared_ptr<platform::Label>& PreferencesViewController::shortcutLabel() {
    if (!shortcutLabel_) {
        shortcutLabel_ = toolkit_.makeLabel(std::string(noShortcutText));
        shortcutLabel_->setEditable(false);
        shortcutLabel_->setSelectable(false);
        shortcutLabel_->setTextColor(TextColor::label);
        shortcutLabel_->setFont({.size = 14, .weight = FontWeight::bold});
        shortcutLabel_->setAlignment(TextAlignment::center);
        shortcutLabel_->setTranslatesAutoresizingMaskIntoConstraints(false);
    }
    return shortcutLabel_;
}

const std::shared_ptr<platform::Button>& PreferencesViewController::recordButton() {
    if (!recordButton_) {
        recordButton_ = makeButton(
            "Record Shortcut", "toggleRecording", &PreferencesViewController::toggleRecording);
        recordButton_->setWantsLayer(true);
        recordButton_->setTranslatesAutoresizingMaskIntoConstraints(false);
    }
    return recordButton_;
}

void PreferencesViewController::setupUI() {
    const auto stack = toolkit_.makeVerticalStack();
    stack->setSpacing(12);
    stack->setEdgeInsets({.top = 20, .leading = 20, .bottom = 20, .trailing = 20});
    stack->setTranslatesAutoresizingMaskIntoConstraints(false);
    view()->addSubview(stack);
    toolkit_.activateConstraints(pinToEdges(stack, view()));

    const auto title = toolkit_.makeLabel("Keyboard Shortcut");
    title->setFont({.size = 16, .weight = FontWeight::bold});
    stack->addArrangedSubview(title);
    stack->addArrangedSubview(makeShortcutDisplayView());
    stack->addArrangedSubview(makeRecordButtonContainer());
    stack->addArrangedSubview(statusLabel());
    stack->addArrangedSubview(makeResetButton());
}

std::shared_ptr<platform::View> PreferencesViewController::makeShortcutDisplayView() {
    const auto title = toolkit_.makeLabel("Current Shortcut:");
    title->setFont({.size = 12});
    title->setTextColor(TextColor::secondaryLabel);
    title->setAlignment(TextAlignment::center);

    const auto stack = toolkit_.makeVerticalStack();
    stack->setSpacing(8);
    stack->setAlignment(platform::VerticalStack::Alignment::centerX);
    stack->setTranslatesAutoresizingMaskIntoConstraints(false);
    stack->addArrangedSubview(title);
    stack->addArrangedSubview(shortcutLabel());

    auto container = toolkit_.makeView({});
    container->addSubview(stack);
    toolkit_.activateConstraints(pinToEdges(stack, container));
    return container;
}

std::shared_ptr<platform::View> PreferencesViewController::makeRecordButtonContainer() {
    const auto& button = recordButton();
    button->setHorizontalContentHuggingPriority(750);

    auto container = toolkit_.makeView({});
    container->addSubview(button);
    toolkit_.activateConstraints({
        LayoutConstraint::equal(button, Anchor::top, container),
        LayoutConstraint::equal(button, Anchor::bottom, container),
        LayoutConstraint::equal(button, Anchor::centerX, container),
        LayoutConstraint::atLeast(button, Anchor::width, 140),
    });
    return container;
}

std::shared_ptr<platform::Button> PreferencesViewController::makeResetButton() {
    return makeButton(
        "Reset to Default", "resetShortcut", &PreferencesViewController::resetShortcut);
}

std::shared_ptr<platform::Button> PreferencesViewController::makeButton(
    std::string title, std::string actionName, void (PreferencesViewController::*method)()) {
    auto perform = [weakSelf = self_.reference(), method] {
        if (PreferencesViewController* const self = weakSelf.get()) {
            (self->*method)();
        }
    };
    auto button = toolkit_.makeButton(
        std::move(title), {.name = std::move(actionName), .perform = std::move(perform)});
    button->setBezelStyle(platform::Button::BezelStyle::rounded);
    return button;
}

void PreferencesViewController::updateUI() {
    const StateTexts texts = textsFor(currentState_);
    recordButton()->setTitle(std::string(texts.buttonTitle));
    statusLabel()->setText(std::string(texts.status));
    recordButton()->animateAlpha(currentState_ == RecordingState::recording ? 0.8 : 1.0, 200ms);
}

void PreferencesViewController::updateShortcutDisplay() {
    const std::optional<std::string> text = savedShortcutText(userDefaults_);
    shortcutLabel()->setText(text ? *text : std::string(noShortcutText));
    shortcutLabel()->setTextColor(text ? TextColor::label : TextColor::secondaryLabel);
}

void PreferencesViewController::startRecording() {
    enterLater(100ms, RecordingState::waiting, RecordingState::recording);
    eventMonitor_ = keyDownMonitors_.addLocalMonitor(
        [weakSelf = self_.reference()](
            const platform::KeyEvent& event) -> std::optional<platform::KeyEvent> {
            if (PreferencesViewController* const self = weakSelf.get()) {
                self->handleKeyEvent(event);
            }
            return std::nullopt;
        });
}

void PreferencesViewController::stopRecording() {
    if (eventMonitor_) {
        keyDownMonitors_.removeMonitor(*eventMonitor_);
        eventMonitor_.reset();
    }
}

void PreferencesViewController::handleKeyEvent(const platform::KeyEvent& event) {
    const auto key = hotkey::keyFromCarbonKeyCode(event.keyCode);
    if (!key || key == hotkey::Key::escape || key == hotkey::Key::tab) {
        return;
    }
    // Arrows, F-keys and the navigation keys carry this flag.
    if (event.modifierFlags.contains(ModifierFlags::function)) {
        return;
    }
    // Caps Lock is one of the flags and is enough.
    const ModifierFlags modifiers{event.modifierFlags.rawValue & deviceIndependentFlagsMask};
    if (modifiers == ModifierFlags{}) {
        return;
    }
    shortcutManager_.setShortcut(*key, modifiers);
    updateShortcutDisplay();
    stopRecording();
    enter(RecordingState::completed);
    enterLater(1500ms, RecordingState::completed, RecordingState::ready);
}

void PreferencesViewController::enter(RecordingState state) {
    currentState_ = state;
    updateUI();
}

void PreferencesViewController::enterLater(std::chrono::milliseconds delay,
                                           RecordingState expected,
                                           RecordingState next) {
    mainQueue_.asyncAfter(
        delay, std::make_shared<platform::WorkItem>([weakSelf = self_.reference(), expected, next] {
            PreferencesViewController* const self = weakSelf.get();
            if (self != nullptr && self->currentState_ == expected) {
                self->enter(next);
            }
        }));
}

} // namespace pastewise
