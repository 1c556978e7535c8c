#pragma once

// A member of this C header is named by a word of C++.
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit
