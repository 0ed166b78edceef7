#include "Pastewise/ShortcutManager.h"

#include "Foundation/Value.h"
#include "Pastewise/SettingsKeys.h"

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace pastewise {

using foundation::Dictionary;
using hotkey::HotKey;
using hotkey::Key;
using hotkey::ModifierFlags;

namespace {

constexpr std::string_view defaultDisplayString = "Command G";
constexpr Key defaultKey = Key::g;
constexpr ModifierFlags defaultModifiers = ModifierFlags::command;

/// A combination as it is saved.
struct StoredShortcut {
    std::uint32_t keyCode;   ///< Carbon virtual key code.
    std::uint64_t modifiers; ///< The raw value of ModifierFlags.
};

/// None unless both numbers are there and in range.
std::optional<StoredShortcut> storedShortcut(const platform::UserDefaults& defaults) {
    const std::optional<Dictionary> dictionary = defaults.dictionaryForKey(userDefinedShortcutKey);
    if (!dictionary) {
        return std::nullopt;
    }
    const auto keyCodeEntry = dictionary->find(shortcutKeyCodeEntry);
    const auto modifiersEntry = dictionary->find(shortcutModifiersEntry);
    if (keyCodeEntry == dictionary->end() || modifiersEntry == dictionary->end()) {
        return std::nullopt;
    }
    const auto keyCode = foundation::exactUint32Value(keyCodeEntry->second);
    const auto modifiers = foundation::exactUint64Value(modifiersEntry->second);
    if (!keyCode || !modifiers) {
        return std::nullopt;
    }
    return StoredShortcut{.keyCode = *keyCode, .modifiers = *modifiers};
}

void storeShortcut(platform::UserDefaults& defaults, StoredShortcut shortcut) {
    defaults.setObject(
        userDefinedShortcutKey,
        Dictionary{{std::string(shortcutKeyCodeEntry), std::uint64_t{shortcut.keyCode}},
                   {std::string(shortcutModifiersEntry), shortcut.modifiers}});
}

std::string description(StoredShortcut shortcut) {
    return R"(["keyCode": )" + std::to_string(shortcut.keyCode) + R"(, "modifiers": )" +
           std::to_string(shortcut.modifiers) + "]";
}

/// The modifiers in words, for example "Command + Shift". Empty if there are none.
std::string words(ModifierFlags modifiers) {
    constexpr std::array<std::pair<ModifierFlags, std::string_view>, 4> names{{
        {ModifierFlags::command, "Command"},
        {ModifierFlags::option, "Option"},
        {ModifierFlags::shift, "Shift"},
        {ModifierFlags::control, "Control"},
    }};
    std::string text;
    for (const auto& [modifier, name] : names) {
        if (modifiers.contains(modifier)) {
            text += text.empty() ? "" : " + ";
            text += name;
        }
    }
    return text;
}

/// The key's text in upper case. Only ASCII letters in it have a case.
std::string upperCaseDescription(Key key) {
    std::string text(hotkey::description(key));
    for (char& character : text) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return text;
}

} // namespace

ShortcutManager::ShortcutManager(hotkey::HotKeysController& hotKeys,
                                 platform::UserDefaults& defaults,
                                 foundation::NotificationCenter& notificationCenter,
                                 const foundation::LoggerFactory& loggers)
    : hotKeys_(hotKeys),
      defaults_(defaults),
      notificationCenter_(notificationCenter),
      logger_(loggers.logger("ShortcutManager")) {
    logger_.debug("Initializing ShortcutManager");
    loadShortcut();
}

void ShortcutManager::loadShortcut() {
    logger_.debug("Loading saved shortcut");
    const std::optional<StoredShortcut> stored = storedShortcut(defaults_);
    if (!stored) {
        logger_.debug("No saved shortcut found or invalid data - setting up default shortcut");
        setUpDefaultShortcut();
        return;
    }
    logger_.debug(
        "Found saved shortcut - KeyCode: %u, Modifiers: %lu", stored->keyCode, stored->modifiers);
    const std::optional<Key> key = hotkey::keyFromCarbonKeyCode(stored->keyCode);
    if (!key) {
        logger_.error("Failed to create Key from carbon code: %u", stored->keyCode);
        setUpDefaultShortcut();
        return;
    }
    logger_.debug("Successfully created Key from carbon code");
    setShortcut(*key, {stored->modifiers});
}

void ShortcutManager::setShortcut(Key key, ModifierFlags modifiers) {
    const std::string keyText(hotkey::description(key));
    const std::string modifierText = modifiers.description();
    logger_.debug("Setting shortcut - Key: %s, Modifiers: %s", keyText, modifierText);
    // The old combination goes first, so that setting it again does not conflict with itself.
    hotKey_.reset();
    hotKey_ = std::make_unique<HotKey>(hotKeys_, key, modifiers);
    hotKey_->keyDownHandler = [weakSelf = self_.reference()] {
        if (const ShortcutManager* const self = weakSelf.get()) {
            self->logger_.debug("Shortcut triggered");
            self->callShortcutHandler();
        }
    };
    const StoredShortcut stored{.keyCode = hotkey::carbonKeyCode(key),
                                .modifiers = modifiers.rawValue};
    storeShortcut(defaults_, stored);
    logger_.debug("Saved shortcut data: %s", [stored] { return description(stored); });
    notificationCenter_.post(
        {.name = std::string(shortcutChanged), .object = modifierText + " " + keyText});
}

void ShortcutManager::clearShortcut() {
    logger_.debug("Clearing shortcut");
    hotKey_.reset();
    defaults_.removeObject(userDefinedShortcutKey);
    setUpDefaultShortcut();
}

void ShortcutManager::retry() {
    hotKey_->setIsPaused(true);
    hotKey_->setIsPaused(false);
}

void ShortcutManager::setUpDefaultShortcut() {
    hotKey_ = std::make_unique<HotKey>(hotKeys_, defaultKey, defaultModifiers);
    // Unlike the press of a shortcut that was set, this one is not logged.
    hotKey_->keyDownHandler = [weakSelf = self_.reference()] {
        if (const ShortcutManager* const self = weakSelf.get()) {
            self->callShortcutHandler();
        }
    };
    storeShortcut(
        defaults_,
        {.keyCode = hotkey::carbonKeyCode(defaultKey), .modifiers = defaultModifiers.rawValue});
    notificationCenter_.post(
        {.name = std::string(shortcutChanged), .object = std::string(defaultDisplayString)});
}

void ShortcutManager::callShortcutHandler() const {
    // A copy: the handler may replace itself, or destroy the manager, while it runs.
    const std::function<void()> handler = shortcutHandler;
    if (handler) {
        handler();
    }
}

std::string ShortcutManager::currentShortcutDisplayString(const platform::UserDefaults& defaults) {
    const std::optional<StoredShortcut> stored = storedShortcut(defaults);
    const std::optional<Key> key =
        stored ? hotkey::keyFromCarbonKeyCode(stored->keyCode) : std::nullopt;
    if (!key) {
        return std::string(defaultDisplayString);
    }
    const std::string modifiers = words({stored->modifiers});
    const std::string keyText = upperCaseDescription(*key);
    return modifiers.empty() ? keyText : modifiers + " " + keyText;
}

} // namespace pastewise
