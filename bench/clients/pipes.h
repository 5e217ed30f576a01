// The service's two pipes, as a client opens them.
#pragma once

#include <windows.h>

#include "platform/unique_handle.h"

namespace bench {

struct Pipes {
  KorvuISD::PipeHandle sendOnly;
  KorvuISD::PipeHandle duplex;
};

// Waits for the service and opens both in message mode. `flags` as CreateFileW takes them.
Pipes OpenPipes(DWORD flags);

}  // namespace bench
