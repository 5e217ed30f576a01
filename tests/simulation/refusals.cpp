#include "refusals.h"

#include <vector>

namespace simulation {
namespace {

struct Entry {
  const char* name;
  std::vector<DWORD> codes;
};

const Entry& EntryOf(size_t refusal) {
  static const auto& entries = *new std::vector<Entry>{
      {"CreateEventW", {ERROR_NOT_ENOUGH_MEMORY}},
      {"CreateFileW", {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_PIPE_BUSY}},
      {"SetNamedPipeHandleState", {ERROR_PIPE_NOT_CONNECTED, ERROR_ACCESS_DENIED}},
      {"WaitNamedPipeW", {ERROR_FILE_NOT_FOUND, ERROR_SEM_TIMEOUT}},
      {"CreateThread", {ERROR_NOT_ENOUGH_MEMORY}},
      {"ReadFile", {ERROR_BROKEN_PIPE, ERROR_PIPE_NOT_CONNECTED, ERROR_NOT_ENOUGH_MEMORY}},
      {"WriteFile", {ERROR_NO_DATA, ERROR_PIPE_NOT_CONNECTED, ERROR_NOT_ENOUGH_MEMORY}},
      {"SetEvent", {ERROR_INVALID_HANDLE}},
      {"ResetEvent", {ERROR_INVALID_HANDLE}},
      {"GetOverlappedResult", {ERROR_BROKEN_PIPE, ERROR_GEN_FAILURE}},
      {"WaitForMultipleObjects", {ERROR_INVALID_HANDLE, ERROR_NOT_ENOUGH_MEMORY}},
      {"WaitForSingleObject", {ERROR_INVALID_HANDLE, ERROR_NOT_ENOUGH_MEMORY}},
      {"DuplicateHandle", {ERROR_NOT_ENOUGH_MEMORY}},
  };
  return entries[refusal];
}

}  // namespace

const char* NameOf(size_t refusal) {
  return EntryOf(refusal).name;
}

DWORD CodeOf(size_t refusal, size_t which) {
  const auto& codes = EntryOf(refusal).codes;
  return codes[which % codes.size()];
}

bool IsRareRefusal(size_t refusal) {
  return refusal == kCreateThread || refusal == kCreateEvent;
}

}  // namespace simulation
