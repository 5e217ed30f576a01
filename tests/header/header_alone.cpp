#include "KorvuTabletSettingsAPI.h"

/* Included twice on purpose: the guard is part of the promise. */
#include "KorvuTabletSettingsAPI.h"

int HeaderAloneInCpp();
int HeaderAloneInCpp() {
  return static_cast<int>(sizeof(KorvuISD_Callbacks));
}
