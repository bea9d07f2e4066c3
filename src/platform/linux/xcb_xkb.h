#pragma once
#pragma GCC system_header // what is needed here is what compilers warn of

/// <xcb/xkb.h>, in which a field has the name of a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
