#include "transport/pipe_pair.h"

#include <algorithm>
#include <limits>

#include "platform/trace.h"

namespace KorvuISD {
namespace {

constexpr DWORD kDuplexPipeWaitMs = 1000;

// The platform's clock has 32 bits and starts again at the other end after 24.8 days, so only the
// difference counts. Nor does a clock that steps back give any time back: the budget only shrinks.
double ElapsedMs(std::clock_t from, std::clock_t to) {
  const uint32_t ticks = static_cast<uint32_t>(to) - static_cast<uint32_t>(from);
  return std::max(static_cast<int32_t>(ticks), 0) * 1000.0 / CLOCKS_PER_SEC;
}

PipeHandle OpenPipe(const std::wstring& name, DWORD access) {
  return PipeHandle(
      CreateFileW(name.c_str(), access, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
}

bool SetMessageReadMode(const PipeHandle& pipe) {
  DWORD mode = PIPE_READMODE_MESSAGE;
  return SetNamedPipeHandleState(pipe.Get(), &mode, nullptr, nullptr) != FALSE;
}

}  // namespace

PipeNames PipeNamesOfThisSession() {
  DWORD session = 0;
  if (!ProcessIdToSessionId(GetCurrentProcessId(), &session)) session = 0;
  const std::wstring number = std::to_wstring(session);
  return {LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_)" + number,
          LR"(\\.\pipe\KorvuSettingsSyncher_)" + number};
}

// The budget counts the time inside WaitNamedPipeW twice: once right after it and once, together
// with the sleep, at the head of the next round. So a finite time-out ends early while the pipe
// exists and is busy; applications have tuned theirs to that.
bool WaitForService(const PipeNames& names, uint32_t timeoutMs, std::clock_t start) {
  constexpr uint32_t kForever = std::numeric_limits<uint32_t>::max();
  const double factor = timeoutMs > 0 && timeoutMs < kForever ? 1.0 : 0.0;
  double budget = timeoutMs == 0 ? 1.0 : static_cast<double>(timeoutMs);
  for (;;) {
    const std::clock_t roundStart = std::clock();
    budget = std::max(0.0, budget - ElapsedMs(start, roundStart) * factor);
    const BOOL found = WaitNamedPipeW(names.sendOnly.c_str(), static_cast<DWORD>(budget));
    const DWORD error = GetLastError();
    if (found == TRUE) return true;
    start = roundStart;
    budget = std::max(0.0, budget - ElapsedMs(roundStart, std::clock()) * factor);
    if (budget <= 0.0) {
      if (found) return true;
      Trace(L"Timed out waiting for Service send only pipe: %d.\r\n", error);
      return false;
    }
    Sleep(static_cast<DWORD>(std::min(1000.0, budget)));
  }
}

bool PipePair::Open(const PipeNames& names) {
  // Writing attributes is what changing the read mode needs.
  sendOnlyPipe = OpenPipe(names.sendOnly, GENERIC_READ | FILE_WRITE_ATTRIBUTES);
  if (!sendOnlyPipe.IsOpen()) {
    Trace(L"Couldn't find Service send only pipe.\r\n");
    return false;
  }
  if (!SetMessageReadMode(sendOnlyPipe)) {
    Close();
    Trace(L"Failed to transition to read mode.\r\n");
    return false;
  }

  if (!WaitNamedPipeW(names.duplex.c_str(), kDuplexPipeWaitMs)) {
    const DWORD error = GetLastError();
    Trace(L"Timed out waiting for Service duplex pipe: %d.\r\n", error);
    // The handle stays open on this path: the service counts it as our place in the queue.
    static_cast<void>(sendOnlyPipe.Release());
    return false;
  }
  duplexPipe = OpenPipe(names.duplex, GENERIC_READ | GENERIC_WRITE);
  if (!duplexPipe.IsOpen()) {
    Close();
    Trace(L"Couldn't find Service duplex pipe.\r\n");
    return false;
  }
  if (!SetMessageReadMode(duplexPipe)) {
    Close();
    Trace(L"Failed to transition to read mode.\r\n");
    return false;
  }
  return true;
}

void PipePair::Close() {
  sendOnlyPipe.Reset();
  duplexPipe.Reset();
}

}  // namespace KorvuISD
