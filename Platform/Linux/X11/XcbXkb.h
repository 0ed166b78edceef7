#pragma once

// The keyboard extension's C header names a member with a C++ keyword.
#include <xcb/xcb.h>
#define explicit explicitComponents // NOLINT
#include <xcb/xkb.h>
#undef explicit
