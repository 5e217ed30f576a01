#include "platform_double/functions.h"
#include "scheduler.h"

DWORD GetLastError() {
  return platform_double::CurrentThreadState().lastError;
}

void SetLastError(DWORD error) {
  platform_double::CurrentThreadState().lastError = error;
}
