#include "settings-service/completion_port.h"

#include <algorithm>

#include "settings-service/system_error.h"

namespace tool::service {
namespace {

constexpr std::chrono::milliseconds kLongestWait = std::chrono::hours(24);

}  // namespace

CompletionPort::CompletionPort()
    : port(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1)) {
  if (!port.IsOpen()) {
    const DWORD error = GetLastError();
    FailWith("cannot create a completion port", error);
  }
}

bool CompletionPort::Add(HANDLE handle) {
  return CreateIoCompletionPort(handle, port.Get(), 0, 0) != nullptr;
}

void CompletionPort::Wake() {
  PostQueuedCompletionStatus(port.Get(), 0, 0, nullptr);
}

bool CompletionPort::Wait(std::optional<std::chrono::milliseconds> limit) {
  const DWORD timeoutMs =
      limit ? static_cast<DWORD>(
                  std::clamp(*limit, std::chrono::milliseconds(0), kLongestWait).count())
            : INFINITE;
  DWORD byteCount = 0;
  ULONG_PTR key = 0;
  OVERLAPPED* ended = nullptr;
  const BOOL succeeded = GetQueuedCompletionStatus(port.Get(), &byteCount, &key, &ended, timeoutMs);
  const DWORD error = succeeded ? ERROR_SUCCESS : GetLastError();
  if (!ended) return succeeded;

  auto& operation = static_cast<Operation&>(*ended);
  operation.isPending = false;
  operation.owner.OnEnded(operation, byteCount, error);
  return true;
}

}  // namespace tool::service
