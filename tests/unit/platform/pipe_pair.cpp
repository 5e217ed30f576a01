#include "unit/platform/pipe_pair.h"

#include <array>
#include <stdexcept>

namespace support {
namespace {

// Of this process and pair alone.
std::wstring NewPipeName() {
  static int count = 0;
  return L"\\\\.\\pipe\\korvu_unit_test_" + std::to_wstring(GetCurrentProcessId()) + L"_" +
         std::to_wstring(++count);
}

}  // namespace

PipePair::PipePair(DWORD bufferBytes) {
  const std::wstring name = NewPipeName();
  service.Reset(CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                 PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE, 1, bufferBytes,
                                 bufferBytes, 0, nullptr));
  ours.Reset(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                         FILE_FLAG_OVERLAPPED, nullptr));
  DWORD mode = PIPE_READMODE_MESSAGE;
  if (!ours.IsOpen() || !SetNamedPipeHandleState(ours.Get(), &mode, nullptr, nullptr)) {
    throw std::runtime_error("no pipe");
  }
}

void PipePair::Write(std::wstring_view message) {
  const KorvuISD::EventHandle event = KorvuISD::CreateManualResetEvent();
  OVERLAPPED overlapped{};
  overlapped.hEvent = event.Get();
  WriteFile(service.Get(), message.data(), static_cast<DWORD>(message.size() * sizeof(wchar_t)),
            nullptr, &overlapped);
  DWORD byteCount = 0;
  if (!GetOverlappedResult(service.Get(), &overlapped, &byteCount, TRUE)) {
    throw std::runtime_error("not written");
  }
}

std::optional<std::wstring> PipePair::Read() {
  const KorvuISD::EventHandle event = KorvuISD::CreateManualResetEvent();
  std::array<wchar_t, 16384> buffer;
  OVERLAPPED overlapped{};
  overlapped.hEvent = event.Get();
  if (!ReadFile(service.Get(), buffer.data(), sizeof(buffer), nullptr, &overlapped) &&
      GetLastError() == ERROR_IO_PENDING) {
    CancelIoEx(service.Get(), &overlapped);
  }
  DWORD byteCount = 0;
  if (!GetOverlappedResult(service.Get(), &overlapped, &byteCount, TRUE)) return std::nullopt;
  return std::wstring(buffer.data(), byteCount / sizeof(wchar_t));
}

}  // namespace support
