// Stands in for the system's header of this name.
#pragma once

#include <windows.h>
