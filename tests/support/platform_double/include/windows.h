// Stands in for the system's header of this name where there is no such system: the types,
// constants and functions that the library and its tests use, and no others.
#pragma once

#include "platform_double/constants.h"
#include "platform_double/functions.h"
#include "platform_double/types.h"

#if defined(KORVU_DOUBLE_IMPORTS)
#include "platform_double/imports.h"
#endif
