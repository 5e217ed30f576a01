// The functions that make, find and connect pipes.

#include <string>

#include "handle_table.h"
#include "misuse.h"
#include "pipe_names.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {
namespace {

// What is waited for if neither the caller nor the pipe says how long.
constexpr DWORD kDefaultWaitMs = 50;

DWORD SpecificRights(DWORD access) {
  DWORD rights = access & ~(GENERIC_READ | GENERIC_WRITE);
  if (access & GENERIC_READ) rights |= FILE_READ_DATA;
  if (access & GENERIC_WRITE) rights |= FILE_WRITE_DATA | FILE_WRITE_ATTRIBUTES;
  return rights;
}

// Connects to an instance that listens.
Status OpenPipe(const std::wstring& name, DWORD access, HANDLE& handle) {
  const auto found = PipeName::Find(name);
  if (!found) return Status::kNameNotFound;
  if (!found->HasListener()) return Status::kPipeBusy;
  handle = OpenHandle(found->TakeListener().Accept(), SpecificRights(access));
  return Status::kSuccess;
}

DWORD WaitMs(const PipeName& name, DWORD timeoutMs) {
  if (timeoutMs != NMPWAIT_USE_DEFAULT_WAIT) return timeoutMs;
  return name.Terms().defaultWaitMs ? name.Terms().defaultWaitMs : kDefaultWaitMs;
}

}  // namespace
}  // namespace platform_double

using namespace platform_double;

HANDLE CreateNamedPipeW(LPCWSTR name, DWORD openMode, DWORD pipeMode, DWORD instances,
                        DWORD outBytes, DWORD inBytes, DWORD defaultWaitMs,
                        LPSECURITY_ATTRIBUTES security) {
  constexpr DWORD kKnownModes =
      PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_REJECT_REMOTE_CLIENTS;
  const std::wstring wanted = name;
  const KernelLock lock;
  if (!PipeName::IsOne(wanted) || openMode != (PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED) ||
      (pipeMode & ~kKnownModes) || security) {
    RefuseAsUnsupported("CreateNamedPipeW", "another kind of name, mode or security");
    return INVALID_HANDLE_VALUE;
  }
  const bool isOfMessages = pipeMode & PIPE_TYPE_MESSAGE;
  const auto found =
      PipeName::FindOrMake(wanted, PipeOfferTerms{isOfMessages, instances, defaultWaitMs});
  const DWORD limit = found->Terms().instances;
  if (limit != PIPE_UNLIMITED_INSTANCES && found->InstanceCount() >= limit) {
    SetLastError(ERROR_PIPE_BUSY);
    return INVALID_HANDLE_VALUE;
  }
  if (found->Terms().isOfMessages != isOfMessages) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  const auto server = std::make_shared<ServerEnd>(found, (pipeMode & PIPE_READMODE_MESSAGE) != 0,
                                                  inBytes, outBytes);
  found->AddInstance(*server);
  SetLastError(ERROR_SUCCESS);
  return OpenHandle(server, SpecificRights(GENERIC_READ | GENERIC_WRITE));
}

BOOL ConnectNamedPipe(HANDLE pipe, LPOVERLAPPED overlapped) {
  if (!overlapped) return RefuseCallAsUnsupported("ConnectNamedPipe", "waiting in the call");
  Operation::MarkPending(*overlapped);
  const KernelLock lock;
  const auto server = Find<ServerEnd>(pipe, "ConnectNamedPipe");
  if (!server) return FALSE;
  const auto operation = Operation::Begin(*overlapped, "ConnectNamedPipe");
  return operation ? Answer(server->Listen(operation)) : FALSE;
}

BOOL DisconnectNamedPipe(HANDLE pipe) {
  const KernelLock lock;
  const auto server = Find<ServerEnd>(pipe, "DisconnectNamedPipe");
  return server ? Answer(server->Disconnect()) : FALSE;
}

BOOL WaitNamedPipeW(LPCWSTR name, DWORD timeoutMs) {
  const std::wstring wanted = name;
  KernelLock lock;
  if (!PipeName::IsOne(wanted))
    return RefuseAsUnsupported("WaitNamedPipeW", "another kind of name");
  const auto found = PipeName::Find(wanted);
  if (!found) return Answer(Status::kNameNotFound);
  return Answer(found->WaitForListener(lock, DeadlineIn(WaitMs(*found, timeoutMs))));
}

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                   DWORD disposition, DWORD flags, HANDLE pattern) {
  const std::wstring wanted = name;
  const KernelLock lock;
  if (!PipeName::IsOne(wanted) || share || security || disposition != OPEN_EXISTING ||
      flags != FILE_FLAG_OVERLAPPED || pattern) {
    RefuseAsUnsupported("CreateFileW", "anything but a pipe for overlapped operations");
    return INVALID_HANDLE_VALUE;
  }
  HANDLE handle = INVALID_HANDLE_VALUE;
  SetLastError(ErrorOf(OpenPipe(wanted, access, handle)));
  return handle;
}

BOOL SetNamedPipeHandleState(HANDLE pipe, LPDWORD mode, LPDWORD collectionBytes,
                             LPDWORD collectionMs) {
  const DWORD wanted = mode ? *mode : 0;
  const KernelLock lock;
  const auto end = Find<PipeEnd>(pipe, "SetNamedPipeHandleState");
  if (!end) return FALSE;
  if (!mode || (wanted & ~PIPE_READMODE_MESSAGE) || collectionBytes || collectionMs) {
    return RefuseAsUnsupported("SetNamedPipeHandleState", "anything but a read mode");
  }
  if (!(AccessOf(pipe) & FILE_WRITE_ATTRIBUTES)) return Answer(Status::kAccessDenied);
  return Answer(end->SetReadMode(wanted == PIPE_READMODE_MESSAGE));
}
