#include "handle_table.h"
#include "misuse.h"
#include "object.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

using namespace platform_double;

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL set, LPCWSTR name) {
  const KernelLock lock;
  if (security || name) {
    RefuseAsUnsupported("CreateEventW", "security or a name");
    return nullptr;
  }
  SetLastError(ERROR_SUCCESS);
  return OpenHandle(std::make_shared<Event>(manualReset != FALSE, set != FALSE));
}

BOOL SetEvent(HANDLE event) {
  const KernelLock lock;
  const auto found = Find<Event>(event, "SetEvent");
  if (!found) return FALSE;
  found->Set();
  return TRUE;
}

BOOL ResetEvent(HANDLE event) {
  const KernelLock lock;
  const auto found = Find<Event>(event, "ResetEvent");
  if (!found) return FALSE;
  found->Reset();
  return TRUE;
}
