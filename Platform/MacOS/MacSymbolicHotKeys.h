#pragma once

#include "HotKey/SymbolicHotKeys.h"
#import "Platform/MacOS/MacConversions.h"

#import <Carbon/Carbon.h>

namespace platform {

/// The keyboard shortcuts that the user sees in the system's settings. Main thread only.
class MacSymbolicHotKeys final : public hotkey::SymbolicHotKeys {
  public:
    [[nodiscard]] Answer copySymbolicHotKeys() override {
        CFArrayRef copied = nullptr;
        Answer answer{.status = CopySymbolicHotKeys(&copied), .hotKeys = {}};
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
};

} // namespace platform
