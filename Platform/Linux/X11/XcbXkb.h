#pragma once

// The keyboard extension's C header names a member with a C++ keyword. This header counts as one of
// the system's, since compilers warn about hiding a keyword.
#pragma GCC system_header

#include <xcb/xcb.h>
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
