// The functions of the platform that can fail, each with the codes that it can fail with.
#pragma once

#include <cstddef>
#include <span>

#include <windows.h>

namespace simulation {

enum Refusal : size_t {
  kCreateEvent,
  kCreateFile,
  kSetPipeState,
  kWaitPipe,
  kCreateThread,
  kReadFile,
  kWriteFile,
  kSetEvent,
  kResetEvent,
  kOverlappedResult,
  kWaitMultiple,
  kWaitSingle,
  kDuplicate,
  kRefusalCount,
};

constexpr size_t RefusalCount() {
  return kRefusalCount;
}
const char* NameOf(size_t refusal);
DWORD CodeOf(size_t refusal, size_t which);

// One that may leave the library without a thread, so that little can be promised after it.
bool IsRareRefusal(size_t refusal);

}  // namespace simulation
