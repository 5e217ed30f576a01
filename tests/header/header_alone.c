#include "KorvuTabletSettingsAPI.h"

/* Included twice on purpose: the guard is part of the promise. */
#include "KorvuTabletSettingsAPI.h"

int HeaderAloneInC(void);
int HeaderAloneInC(void) {
  return (int)sizeof(KorvuISD_Callbacks);
}
