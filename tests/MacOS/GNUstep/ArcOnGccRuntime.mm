// Runs code compiled with ARC on gcc's Objective-C runtime, which Debian's GNUstep uses and for
// which clang does not support ARC. Such code is compiled for the first GNUstep runtime, whose
// modules differ little from gcc's: they are adapted here as they are loaded, and the functions
// that ARC calls are implemented below. This file itself is compiled for gcc's runtime, without
// ARC. Only one thread at a time may use weak references.

#import <Block.h>
#import <Foundation/Foundation.h>
#import <objc/message.h>
#import <objc/runtime.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <unordered_map>

namespace {

struct ProtocolList;

struct ProtocolRecord {
    long version;
    const char* name;
    ProtocolList* protocols;
};

struct ProtocolList {
    ProtocolList* next;
    std::size_t count;
    ProtocolRecord* protocols[1];
};

struct Ivar {
    const char* name;
    const char* type;
    int offset;
};

struct IvarList {
    int count;
    Ivar ivars[1];
};

struct ClassRecord {
    ClassRecord* metaclass;
    const char* superclass;
    const char* name;
    long version;
    unsigned long info;
    long instanceSize;
    IvarList* ivars;
    void* methods;
    void* dispatchTable;
    void* subclasses;
    void* sibling;
    ProtocolList* protocols;
    void* reserved;
    // gcc's runtime does not know the fields that follow.
    long abiVersion;
    int** ivarOffsets;
};

struct CategoryRecord {
    const char* name;
    const char* className;
    void* instanceMethods;
    void* classMethods;
    ProtocolList* protocols;
};

struct SymbolTable {
    unsigned long selectorCount;
    void* selectors;
    unsigned short classCount;
    unsigned short categoryCount;
    void* definitions[1];
};

struct Module {
    unsigned long version;
    unsigned long size;
    const char* name;
    SymbolTable* symbols;
};

constexpr unsigned long gccModuleVersion = 8;
constexpr long gccProtocolVersion = 2;
constexpr long gnustepProtocolVersion = 3;
/// In gcc's runtime this bit marks a class under construction.
constexpr unsigned long gnustepAbiFlag = 0x10;

void adaptProtocols(ProtocolList* list) {
    for (; list != nullptr; list = list->next) {
        for (std::size_t i = 0; i < list->count; ++i) {
            ProtocolRecord& protocol = *list->protocols[i];
            if (protocol.version == gnustepProtocolVersion) {
                protocol.version = gccProtocolVersion;
                adaptProtocols(protocol.protocols);
            }
        }
    }
}

/// The instance sizes of all adapted classes.
std::map<std::string, long>& adaptedSizes() {
    static std::map<std::string, long> sizes;
    return sizes;
}

/// 0 if the class is not known yet.
long instanceSize(const char* className) {
    const auto adapted = adaptedSizes().find(className);
    if (adapted != adaptedSizes().end()) {
        return adapted->second;
    }
    Class known = objc_lookUpClass(className);
    return known == Nil ? 0 : static_cast<long>(class_getInstanceSize(known));
}

/// Lays out the instance variables after those of the superclass. False if that is not known yet.
bool adaptClass(ClassRecord& record) {
    const long start = instanceSize(record.superclass);
    if (start == 0) {
        return false;
    }
    record.instanceSize = start - record.instanceSize;
    for (int i = 0; record.ivars != nullptr && i < record.ivars->count; ++i) {
        int& offset = record.ivars->ivars[i].offset;
        offset += static_cast<int>(start);
        *record.ivarOffsets[i] = offset;
    }
    record.info &= ~gnustepAbiFlag;
    record.metaclass->info &= ~gnustepAbiFlag;
    adaptProtocols(record.protocols);
    adaptedSizes()[record.name] = record.instanceSize;
    return true;
}

void adaptClasses(SymbolTable& symbols) {
    std::set<ClassRecord*> waiting;
    for (int i = 0; i < symbols.classCount; ++i) {
        waiting.insert(static_cast<ClassRecord*>(symbols.definitions[i]));
    }
    while (!waiting.empty()) {
        if (std::erase_if(waiting, [](ClassRecord* record) { return adaptClass(*record); }) == 0) {
            std::fprintf(stderr, "no superclass for %s\n", (*waiting.begin())->name);
            std::abort();
        }
    }
}

/// What a message send looks its method up in; the compiler reads it at once.
struct Slot {
    Class owner;
    Class cachedFor;
    const char* types;
    int version;
    IMP method;
};

thread_local Slot slot;

} // namespace

extern "C" {

// The linker redirects calls of __objc_exec_class to the first; the second is the original.
void __wrap___objc_exec_class(Module* module);
void __real___objc_exec_class(Module* module);

void __wrap___objc_exec_class(Module* module) {
    if (module->version != gccModuleVersion) {
        module->version = gccModuleVersion;
        module->size = sizeof *module;
        SymbolTable& symbols = *module->symbols;
        adaptClasses(symbols);
        for (int i = 0; i < symbols.categoryCount; ++i) {
            void* const category = symbols.definitions[symbols.classCount + i];
            adaptProtocols(static_cast<CategoryRecord*>(category)->protocols);
        }
    }
    __real___objc_exec_class(module);
}

Slot* objc_msg_lookup_sender(id* receiver, SEL selector, id /*sender*/) {
    slot.method = objc_msg_lookup(*receiver, selector);
    return &slot;
}

Slot* objc_slot_lookup_super(objc_super* super, SEL selector) {
    slot.method = objc_msg_lookup_super(super, selector);
    return &slot;
}

int __gxx_personality_v0(int version, int actions, unsigned long kind, void* object, void* context);

/// Handles C++ exceptions and scope exits; nothing here catches Objective-C exceptions.
int __gnustep_objcxx_personality_v0(
    int version, int actions, unsigned long kind, void* object, void* context) {
    return __gxx_personality_v0(version, actions, kind, object, context);
}

extern void* _NSConcreteGlobalBlock[];
extern void* _NSConcreteMallocBlock[];
extern void* _NSConcreteStackBlock[];

} // extern "C"

namespace {

/// For this blocks library, a block is not an object.
bool isBlock(id object) {
    void* const kind = *reinterpret_cast<void**>(object);
    return kind == _NSConcreteGlobalBlock || kind == _NSConcreteMallocBlock ||
           kind == _NSConcreteStackBlock;
}

id copyBlock(id block) {
    return static_cast<id>(_Block_copy(static_cast<void*>(block)));
}

} // namespace

/// Releases a block when it is destroyed, for autorelease pools.
@interface PWTestBlockOwner : NSObject {
  @public
    void* block;
}
@end

@implementation PWTestBlockOwner

- (void)dealloc {
    _Block_release(block);
    [super dealloc];
}

@end

namespace {

/// The weak references to each object.
std::unordered_map<id, std::set<id*>>& weakReferences() {
    static auto* const references = new std::unordered_map<id, std::set<id*>>;
    return *references;
}

IMP originalDealloc;

void clearWeakReferencesAndDealloc(id self, SEL selector) {
    const auto found = weakReferences().find(self);
    if (found != weakReferences().end()) {
        for (id* reference : found->second) {
            *reference = nil;
        }
        weakReferences().erase(found);
    }
    originalDealloc(self, selector);
}

void watchDealloc() {
    if (originalDealloc == nullptr) {
        Method method = class_getInstanceMethod([NSObject class], @selector(dealloc));
        originalDealloc =
            method_setImplementation(method, reinterpret_cast<IMP>(clearWeakReferencesAndDealloc));
    }
}

} // namespace

extern "C" {

id objc_retain(id object) {
    if (object == nil) {
        return nil;
    }
    return isBlock(object) ? copyBlock(object) : [object retain];
}

void objc_release(id object) {
    if (object == nil) {
        return;
    }
    if (isBlock(object)) {
        _Block_release(static_cast<void*>(object));
    } else {
        [object release];
    }
}

id objc_retainBlock(id block) {
    return block == nil ? nil : copyBlock(block);
}

id objc_autorelease(id object) {
    if (object == nil || !isBlock(object)) {
        return [object autorelease];
    }
    PWTestBlockOwner* const owner = [[PWTestBlockOwner alloc] init];
    owner->block = object;
    [owner autorelease];
    return object;
}

id objc_retainAutorelease(id object) {
    return objc_autorelease(objc_retain(object));
}

id objc_autoreleaseReturnValue(id object) {
    return objc_autorelease(object);
}

id objc_retainAutoreleaseReturnValue(id object) {
    return objc_retainAutorelease(object);
}

id objc_retainAutoreleasedReturnValue(id object) {
    return objc_retain(object);
}

id objc_unsafeClaimAutoreleasedReturnValue(id object) {
    return object;
}

void objc_storeStrong(id* place, id object) {
    id old = *place;
    if (old != object) {
        *place = objc_retain(object);
        objc_release(old);
    }
}

void objc_setProperty_nonatomic_copy(id self, SEL /*setter*/, id object, std::ptrdiff_t offset) {
    id* const place = reinterpret_cast<id*>(reinterpret_cast<char*>(self) + offset);
    id old = *place;
    *place = object == nil || isBlock(object) ? objc_retainBlock(object) : [object copy];
    objc_release(old);
}

void* objc_autoreleasePoolPush() {
    return [[NSAutoreleasePool alloc] init];
}

void objc_autoreleasePoolPop(void* pool) {
    [static_cast<NSAutoreleasePool*>(pool) drain];
}

id objc_storeWeak(id* place, id object) {
    watchDealloc();
    if (*place != nil) {
        weakReferences()[*place].erase(place);
    }
    *place = object;
    if (object != nil) {
        weakReferences()[object].insert(place);
    }
    return object;
}

id objc_initWeak(id* place, id object) {
    *place = nil;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(id* place) {
    objc_storeWeak(place, nil);
}

id objc_loadWeakRetained(id* place) {
    return objc_retain(*place);
}

void objc_copyWeak(id* to, id* from) {
    objc_initWeak(to, *from);
}

void objc_moveWeak(id* to, id* from) {
    objc_copyWeak(to, from);
    objc_destroyWeak(from);
}

} // extern "C"
