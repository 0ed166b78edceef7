#pragma once

#include "Foundation/ObserverList.h"
#include "Foundation/WeakReference.h"
#include "Pastewise/RecordingState.h"
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

/// The content of the preferences window: shows the saved shortcut, records another one from the
/// next combination that the user presses, and goes back to the default. Main thread only.
///
/// While a recording runs no key press reaches the program's windows. A key that cannot be a
/// shortcut is consumed in silence and the recording goes on. What the controller is given outlives
/// it; work that it has put off does nothing once it is gone.
class PreferencesViewController final : public platform::ViewController {
  public:
    PreferencesViewController(platform::Toolkit& toolkit,
                              platform::KeyDownMonitors& keyDownMonitors,
                              platform::MainQueue& mainQueue,
                              platform::UserDefaults& userDefaults,
                              ShortcutManager& shortcutManager);

    void loadView() override;
    void viewDidLoad() override;

    /// Ends a recording.
    void viewDidDisappear() override;

    [[nodiscard]] RecordingState currentState() const { return currentState_; }

    /// The record button's action: begins a recording, or gives it up.
    void toggleRecording();

    /// The reset button's action. A key pressed afterwards in a recording that was going on may
    /// still become the shortcut.
    void resetShortcut();

    /// Command, option, shift and control as symbols in this order, then the key's letter in UTF-8.
    /// A key without a letter shows its modifiers alone. `keyCode` is a Carbon virtual key code;
    /// more than 16 bits of it are a fatal error. `modifiers` are those of hotkey::ModifierFlags.
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

    /// Always false, since currentState_ alone tells of a recording. It is kept as one of the
    /// controller's properties and never read or changed.
    [[maybe_unused]] bool recordingShortcut_ = false;
    std::optional<foundation::ObserverToken> eventMonitor_;
    RecordingState currentState_ = RecordingState::ready;
    std::shared_ptr<platform::Label> statusLabel_;
    std::shared_ptr<platform::Label> shortcutLabel_;
    std::shared_ptr<platform::Button> recordButton_;
    foundation::WeakReferenceSource<PreferencesViewController> self_{this};
};

} // namespace pastewise
