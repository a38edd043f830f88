#pragma once

// The header of XCB's keyboard extension has a field called `explicit`, which C++ keeps for itself.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
