// The two pipes of a connection: waiting for the service's, opening and closing them in order.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

#include <windows.h>

#include "platform/unique_handle.h"

namespace KorvuISD {

// The service of each Windows session has pipes of its own.
struct PipeNames {
  std::wstring sendOnly;
  std::wstring duplex;
};

PipeNames PipeNamesOfThisSession();

// Waits until an instance of the send-only pipe is free. `start` is when the caller's time began.
// False, with a trace, if the time runs out.
bool WaitForService(const PipeNames& names, uint32_t timeoutMs, std::clock_t start);

// Both pipes are open or neither is. They close with the pair.
class PipePair {
 public:
  // Opens a closed pair for messages: the send-only pipe, then the duplex pipe, which it waits for
  // up to a second. False, with a trace, if one of the steps fails.
  bool Open(const PipeNames& names);

  // The send-only pipe first.
  void Close();

  HANDLE SendOnly() const { return sendOnlyPipe.Get(); }
  HANDLE Duplex() const { return duplexPipe.Get(); }

 private:
  PipeHandle duplexPipe;    // we write a request, the service its reply
  PipeHandle sendOnlyPipe;  // the service writes, we only read; declared last, it is closed first
};

}  // namespace KorvuISD
