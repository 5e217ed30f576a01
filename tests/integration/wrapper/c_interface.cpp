#include "integration/wrapper/c_interface.h"

#include <mutex>

using support::CInterface;

namespace {

std::mutex g_mutex;  // guards what is written down

}  // namespace

CInterface& CInterface::Instance() {
  static CInterface instance;
  return instance;
}

void KORVUISD_CALL KorvuISD_SetAPIVersion(int32_t version) {
  CInterface& own = CInterface::Instance();
  {
    const std::lock_guard lock(g_mutex);
    own.apiVersion = version;
  }
  if (own.library) own.library->KorvuISD_SetAPIVersion(version);
}

void KORVUISD_CALL KorvuISD_RegisterCallbacks(const KorvuISD_Callbacks* callbacks, void* context) {
  CInterface& own = CInterface::Instance();
  {
    const std::lock_guard lock(g_mutex);
    own.registered.push_back(
        {!callbacks, callbacks ? *callbacks : KorvuISD_Callbacks{}, context, own.apiVersion});
  }
  if (own.library) own.library->KorvuISD_RegisterCallbacks(callbacks, context);
}

KorvuISD_Error KORVUISD_CALL KorvuISD_Connect(uint32_t timeoutMs) {
  CInterface& own = CInterface::Instance();
  own.timeouts.push_back(timeoutMs);
  return own.library ? own.library->KorvuISD_Connect(timeoutMs) : KorvuISD_ErrorFailed;
}

void KORVUISD_CALL KorvuISD_Shutdown() {
  CInterface& own = CInterface::Instance();
  ++own.shutdownCount;
  if (own.beforeShutdown) own.beforeShutdown();
  if (own.library) own.library->KorvuISD_Shutdown();
}
