#pragma once

// The requests of the XKEYBOARD extension. Their C header has a field that is called like a keyword
// of C++, hence the new name, which compilers only accept without a warning in a system's header.
#pragma GCC system_header
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
