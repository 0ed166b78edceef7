#include "Pastewise/ShortcutManager.h"

#include "Foundation/Value.h"

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

constexpr std::string_view userDefinedShortcutKey = "userDefinedShortcut";
constexpr std::string_view defaultDisplayString = "Command G";
constexpr Key defaultKey = Key::g;
constexpr ModifierFlags defaultModifiers = ModifierFlags::command;

/// A combination as the settings hold it.
struct StoredShortcut {
    /// Carbon's virtual key code.
    std::uint32_t keyCode;
    /// The raw value of ModifierFlags.
    std::uint64_t modifiers;
};

/// None unless both numbers are there.
std::optional<StoredShortcut> storedShortcut(const platform::UserDefaults& defaults) {
    const std::optional<Dictionary> dictionary = defaults.dictionaryForKey(userDefinedShortcutKey);
    if (!dictionary) {
        return std::nullopt;
    }
    const auto keyCodeEntry = dictionary->find("keyCode");
    const auto modifiersEntry = dictionary->find("modifiers");
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
    defaults.setObject(userDefinedShortcutKey,
                       Dictionary{{"keyCode", std::uint64_t{shortcut.keyCode}},
                                  {"modifiers", shortcut.modifiers}});
}

std::string description(StoredShortcut shortcut) {
    return R"(["keyCode": )" + std::to_string(shortcut.keyCode) + R"(, "modifiers": )" +
           std::to_string(shortcut.modifiers) + "]";
}

/// The modifiers in words, for example "Command + Shift". Empty when there are none.
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

/// The key's text in upper case. Only ASCII letters have a case in the texts of keys.
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
    // The old combination goes first, so that setting it once more does not meet itself.
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

void ShortcutManager::setUpDefaultShortcut() {
    hotKey_ = std::make_unique<HotKey>(hotKeys_, defaultKey, defaultModifiers);
    // The press of a shortcut that nobody set is not worth a line in the log.
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
