// Services that the platform as a whole refers to, GNUstep lacks, and no test calls.

#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>
#import <os/log.h>

#include <cstdlib>

CFStringRef kAXTrustedCheckOptionPrompt = nullptr;

Boolean AXIsProcessTrusted() {
    std::abort();
}

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef) {
    std::abort();
}

EventTargetRef GetEventDispatcherTarget() {
    std::abort();
}

OSStatus
RegisterEventHotKey(UInt32, UInt32, EventHotKeyID, EventTargetRef, OptionBits, EventHotKeyRef*) {
    std::abort();
}

OSStatus UnregisterEventHotKey(EventHotKeyRef) {
    std::abort();
}

OSStatus InstallEventHandler(
    EventTargetRef, EventHandlerUPP, ItemCount, const EventTypeSpec*, void*, EventHandlerRef*) {
    std::abort();
}

OSStatus GetEventParameter(
    EventRef, EventParamName, EventParamType, EventParamType*, ByteCount, ByteCount*, void*) {
    std::abort();
}

UInt32 GetEventKind(EventRef) {
    std::abort();
}

// The log may be created, and stays off.
os_log_t os_log_create(const char*, const char*) {
    return nil;
}

bool os_log_type_enabled(os_log_t, os_log_type_t) {
    return false;
}

void _os_log_impl(void*, os_log_t, os_log_type_t, const char*, uint8_t*, uint32_t) {
    std::abort();
}
