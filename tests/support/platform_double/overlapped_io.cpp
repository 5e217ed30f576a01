// The functions that read, write, withdraw, and tell how it went.

#include <atomic>
#include <span>

#include "control.h"
#include "handle_table.h"
#include "misuse.h"
#include "operation.h"
#include "pipe_end.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {
namespace {

// What is asked for a pipe that an operation is to be started on. Null, and the last error set, if
// that cannot be.
std::shared_ptr<PipeEnd> FindFor(HANDLE file, DWORD right, const char* function) {
  auto end = Find<PipeEnd>(file, function);
  if (end && !(AccessOf(file) & right)) {
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
  }
  return end;
}

struct Started {
  Status status;
  DWORD byteCount;
};

BOOL AnswerStart(const Started& started, LPDWORD byteCount) {
  if (byteCount) *byteCount = started.status == Status::kSuccess ? started.byteCount : 0;
  return Answer(started.status);
}

Status StatusOf(OVERLAPPED& overlapped) {
  return static_cast<Status>(std::atomic_ref(overlapped.Internal).load(std::memory_order_acquire));
}

}  // namespace

size_t ConnectionOf(HANDLE pipe) {
  const KernelLock lock;
  const auto end = Find<PipeEnd>(pipe, "ConnectionOf");
  return end ? end->Connection() : 0;
}

}  // namespace platform_double

using namespace platform_double;

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD byteCount, LPOVERLAPPED overlapped) {
  if (!overlapped) return RefuseCallAsUnsupported("ReadFile", "waiting in the call");
  Operation::MarkPending(*overlapped);
  Started started{};
  {
    const KernelLock lock;
    const auto end = FindFor(file, FILE_READ_DATA, "ReadFile");
    if (!end) return FALSE;
    const auto read =
        Operation::Begin(*overlapped, "ReadFile", std::span(static_cast<char*>(buffer), size));
    if (!read) return FALSE;
    started.status = end->Read(read);
    started.byteCount = static_cast<DWORD>(read->ByteCount());
  }
  return AnswerStart(started, byteCount);
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD byteCount,
               LPOVERLAPPED overlapped) {
  if (!overlapped) return RefuseCallAsUnsupported("WriteFile", "waiting in the call");
  Operation::MarkPending(*overlapped);
  Started started{};
  {
    const KernelLock lock;
    const auto end = FindFor(file, FILE_WRITE_DATA, "WriteFile");
    if (!end) return FALSE;
    const auto write = Operation::Begin(*overlapped, "WriteFile");
    if (!write) return FALSE;
    started.status = end->Write(write, std::span(static_cast<const char*>(buffer), size));
    started.byteCount = static_cast<DWORD>(write->ByteCount());
  }
  return AnswerStart(started, byteCount);
}

BOOL CancelIoEx(HANDLE file, LPOVERLAPPED overlapped) {
  const KernelLock lock;
  const auto end = Find<PipeEnd>(file, "CancelIoEx");
  if (!end) return FALSE;
  return Answer(end->Cancel(overlapped) ? Status::kSuccess : Status::kNotFound);
}

BOOL GetOverlappedResult(HANDLE file, LPOVERLAPPED overlapped, LPDWORD byteCount, BOOL wait) {
  Status status = StatusOf(*overlapped);
  if (status == Status::kPending) {
    if (!wait) {
      SetLastError(ERROR_IO_INCOMPLETE);
      return FALSE;
    }
    const HANDLE signal = overlapped->hEvent ? overlapped->hEvent : file;
    if (WaitForSingleObject(signal, INFINITE) == WAIT_FAILED) return FALSE;
    status = StatusOf(*overlapped);
    // Whoever signals the event of an operation by hand is told what there is.
    if (status == Status::kPending) status = Status::kSuccess;
  }
  *byteCount = static_cast<DWORD>(overlapped->InternalHigh);
  return Answer(status);
}
