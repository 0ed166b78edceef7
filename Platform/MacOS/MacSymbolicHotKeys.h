#pragma once

#include "HotKey/KeyCombo.h"
#import "Platform/MacOS/MacConversions.h"

#import <Carbon/Carbon.h>

namespace platform {

/// The keyboard shortcuts that the user sees in System Settings. Main thread only.
[[nodiscard]] inline hotkey::SymbolicHotKeys copySymbolicHotKeys() {
    CFArrayRef copied = nullptr;
    hotkey::SymbolicHotKeys answer{.status = CopySymbolicHotKeys(&copied), .hotKeys = {}};
    NSArray* const hotKeys = CFBridgingRelease(copied);
    if (hotKeys != nil) {
        answer.hotKeys.emplace();
    }
    for (id hotKey in hotKeys) {
        if ([hotKey isKindOfClass:[NSDictionary class]]) {
            answer.hotKeys->push_back(dictionaryOf(hotKey));
        }
    }
    return answer;
}

} // namespace platform
