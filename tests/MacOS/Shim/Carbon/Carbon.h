// Carbon's event manager as far as hot keys need it, and the names of virtual key codes.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned char UInt8;
typedef unsigned short UInt16;
typedef unsigned int UInt32;
typedef signed int SInt32;
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
typedef unsigned long ByteCount;

enum { noErr = 0 };

enum { paramErr = -50 };

enum {
    eventAlreadyPostedErr = -9860,
    eventTargetBusyErr = -9861,
    eventClassInvalidErr = -9862,
    eventClassIncorrectErr = -9864,
    eventHandlerAlreadyInstalledErr = -9866,
    eventInternalErr = -9868,
    eventKindIncorrectErr = -9869,
    eventParameterNotFoundErr = -9870,
    eventNotHandledErr = -9874,
    eventLoopTimedOutErr = -9875,
    eventLoopQuitErr = -9876,
    eventNotInQueueErr = -9877,
    eventHotKeyExistsErr = -9878,
    eventHotKeyInvalidErr = -9879,
};

typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;

typedef OSType EventParamName;
typedef OSType EventParamType;

struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;

struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef next, EventRef event, void* userData);
typedef EventHandlerProcPtr EventHandlerUPP;

enum { kEventClassKeyboard = 0x6b657962 };

enum { kEventHotKeyPressed = 5, kEventHotKeyReleased = 6 };

enum { kEventParamDirectObject = 0x2d2d2d2d };

enum { typeEventHotKeyID = 0x686b6964 };

enum { kEventHotKeyNoOptions = 0, kEventHotKeyExclusive = 1 << 0 };

enum { cmdKey = 1 << 8, shiftKey = 1 << 9, optionKey = 1 << 11, controlKey = 1 << 12 };

#define kHISymbolicHotKeyCode CFSTR("kHISymbolicHotKeyCode")
#define kHISymbolicHotKeyModifiers CFSTR("kHISymbolicHotKeyModifiers")
#define kHISymbolicHotKeyEnabled CFSTR("kHISymbolicHotKeyEnabled")

EventTargetRef GetEventDispatcherTarget(void);
EventTargetRef GetApplicationEventTarget(void);
OSStatus RegisterEventHotKey(UInt32 keyCode,
                             UInt32 modifiers,
                             EventHotKeyID hotKeyID,
                             EventTargetRef target,
                             OptionBits options,
                             EventHotKeyRef* reference);
OSStatus UnregisterEventHotKey(EventHotKeyRef reference);
OSStatus InstallEventHandler(EventTargetRef target,
                             EventHandlerUPP handler,
                             ItemCount count,
                             const EventTypeSpec* types,
                             void* userData,
                             EventHandlerRef* reference);
OSStatus RemoveEventHandler(EventHandlerRef reference);
OSStatus GetEventParameter(EventRef event,
                           EventParamName name,
                           EventParamType desiredType,
                           EventParamType* actualType,
                           ByteCount size,
                           ByteCount* actualSize,
                           void* data);
UInt32 GetEventKind(EventRef event);
OSType GetEventClass(EventRef event);
OSStatus CopySymbolicHotKeys(CFArrayRef* hotKeys);

#ifdef __cplusplus
}
#endif
