#pragma once

#include <plist/plist.h>

#include <memory>

namespace platform {

struct PropertyListDeleter {
    void operator()(void* node) const noexcept { plist_free(node); }
};

/// Owns a tree of libplist's, whose plist_t is a pointer to void. Hand it over with release() to a
/// container that takes possession of it.
using PropertyListNode = std::unique_ptr<void, PropertyListDeleter>;

} // namespace platform
