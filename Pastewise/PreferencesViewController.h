#pragma once

#include "Foundation/ObserverList.h"
#include "Foundation/WeakReference.h"
#include "Platform/KeyDownMonitors.h"
#include "Platform/MainQueue.h"
#include "Platform/UserDefaults.h"
#include "Platform/Views.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace pastewise {

class ShortcutManager;

/// The progress of recording a shortcut.
enum class RecordingState : std::uint8_t { ready, waiting, recording, completed };

/// The content of the preferences window: shows the saved shortcut, records a new one from the next
/// combination that the user presses, and restores the default. Main thread only.
///
/// While recording, no key press reaches the program's windows: a key that cannot be a shortcut is
/// swallowed, and recording goes on. The controller does not own what it is given; deferred work
/// does nothing once it is gone.
class PreferencesViewController final : public platform::ViewController {
  public:
    PreferencesViewController(platform::Toolkit& toolkit,
                              platform::KeyDownMonitors& keyDownMonitors,
                              platform::MainQueue& mainQueue,
                              platform::UserDefaults& userDefaults,
                              ShortcutManager& shortcutManager);

    void loadView() override;
    void viewDidLoad() override;

    /// Stops recording.
    void viewDidDisappear() override;

    [[nodiscard]] RecordingState currentState() const { return currentState_; }

    /// The record button's action: starts or cancels recording.
    void toggleRecording();

    /// The reset button's action: restores the default shortcut and ends a recording.
    void resetShortcut();

    /// The symbols of command, option, shift and control in this order, then the key's letter, if
    /// it has one, in UTF-8. `keyCode` is a Carbon virtual key code; more than 16 bits are a fatal
    /// error. `modifiers` are those of hotkey::ModifierFlags.
    [[nodiscard]] static std::string shortcutDisplayString(std::uint64_t keyCode,
                                                           std::uint64_t modifiers);

  private:
    [[nodiscard]] const std::shared_ptr<platform::Label>& statusLabel();
    [[nodiscard]] const std::shared_ptr<platform::Label>& shortcutLabel();
    [[nodiscard]] const std::shared_ptr<platform::Button>& recordButton();

    void setupUI();
    [[nodiscard]] std::shared_ptr<platform::View> makeShortcutDisplayView();
    [[nodiscard]] std::shared_ptr<platform::View> makeRecordButtonContainer();
    [[nodiscard]] std::shared_ptr<platform::Button> makeResetButton();
    [[nodiscard]] std::shared_ptr<platform::Button> makeButton(
        std::string title, std::string actionName, void (PreferencesViewController::*method)());

    void updateUI();
    void updateShortcutDisplay();

    void startRecording();
    void stopRecording();
    void handleKeyEvent(const platform::KeyEvent& event);

    void enter(RecordingState state);
    void enterLater(std::chrono::milliseconds delay, RecordingState expected, RecordingState next);

    platform::Toolkit& toolkit_;
    platform::KeyDownMonitors& keyDownMonitors_;
    platform::MainQueue& mainQueue_;
    platform::UserDefaults& userDefaults_;
    ShortcutManager& shortcutManager_;

    /// Always false and never read: currentState_ alone says whether a recording runs.
    [[maybe_unused]] bool recordingShortcut_ = false;
    std::optional<foundation::ObserverToken> eventMonitor_;
    RecordingState currentState_ = RecordingState::ready;
    std::shared_ptr<platform::Label> statusLabel_;
    std::shared_ptr<platform::Label> shortcutLabel_;
    std::shared_ptr<platform::Button> recordButton_;
    foundation::WeakReferenceSource<PreferencesViewController> self_{this};
};

} // namespace pastewise
