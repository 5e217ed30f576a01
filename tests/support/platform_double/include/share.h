// Stands in for the C runtime's header of this name.
#pragma once

#define _SH_DENYNO 0x40
