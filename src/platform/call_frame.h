// The call frame: one lock around all work on the client, whichever thread brings it.
#pragma once

#include <atomic>
#include <functional>

#include "platform/mutex.h"

namespace KorvuISD {

// Held while work on the client runs, callbacks included. Recursive, because work brings more work:
// a callback may call any export. Nothing under it takes the loader's lock, which an application's
// DllMain holds when it calls an export.
extern RecursiveMutex g_apiMutex;

// Runs `work` under g_apiMutex, unless `shuttingDown` is set by then. An empty function throws
// std::bad_function_call. What `work` throws goes to the caller.
void RunLocked(const std::atomic<bool>& shuttingDown, const std::function<void()>& work);

}  // namespace KorvuISD
