// How operations of the kernel end, and the errors that its callers see.
#pragma once

#include "platform_double/types.h"

namespace platform_double {

enum class Status : DWORD {
  kSuccess = 0,
  kPending = 0x103,
  kMoreData = 0x80000005,
  kInvalidParameter = 0xC000000D,
  kAccessDenied = 0xC0000022,
  kNameNotFound = 0xC0000034,
  kPipeBusy = 0xC00000AC,
  kPipeDisconnected = 0xC00000B0,
  kPipeClosing = 0xC00000B1,
  kPipeConnected = 0xC00000B2,
  kPipeListening = 0xC00000B3,
  kTimeout = 0xC00000B5,
  kCancelled = 0xC0000120,
  kPipeBroken = 0xC000014B,
  kNotFound = 0xC0000225,
};

DWORD ErrorOf(Status status);

// TRUE for success, which leaves the last error alone.
BOOL Answer(Status status);

}  // namespace platform_double
