#pragma once

#include <string_view>

namespace pastewise {

/// The names of the program's settings.
inline constexpr std::string_view lastInteractionSavedSecondsKey =
    "analytics.lastInteractionSavedSeconds";
inline constexpr std::string_view lastInteractionDateKey = "analytics.lastInteractionDate";
inline constexpr std::string_view confirmationRequiresMiroFocusKey =
    "analytics.confirmationRequiresMiroFocus";
/// Followed by a day, as in "analytics.todaySavedSeconds.2024-03-07".
inline constexpr std::string_view todaySavedSecondsKeyPrefix = "analytics.todaySavedSeconds.";
inline constexpr std::string_view shouldFlashSavingsKey = "analytics.shouldFlashSavings";

/// A dictionary with the two entries below.
inline constexpr std::string_view userDefinedShortcutKey = "userDefinedShortcut";
inline constexpr std::string_view shortcutKeyCodeEntry = "keyCode";
inline constexpr std::string_view shortcutModifiersEntry = "modifiers";

} // namespace pastewise
