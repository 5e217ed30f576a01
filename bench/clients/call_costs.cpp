#include "clients/call_costs.h"

#include <array>
#include <string>
#include <vector>

#include "platform/unique_handle.h"
#include "settings/number_conversion.h"
#include "support/clock.h"
#include "support/statistics.h"
#include "support/system_failure.h"

namespace bench {
namespace {

using KorvuISD::CreateManualResetEvent;
using KorvuISD::EventHandle;
using KorvuISD::PipeHandle;

constexpr double kNsPerUs = 1000;
constexpr DWORD kBufferBytes = 1024;
constexpr DWORD kMessageBytes = 160;  // of a request

template <class Calls>
double Cost(size_t count, const Calls& calls) {
  std::vector<double> took(count);
  for (double& ns : took) {
    const int64_t begin = WallNs();
    calls();
    ns = static_cast<double>(WallNs() - begin);
  }
  return MiddleMean(took) / kNsPerUs;
}

// Both ends of a pipe like the service's.
struct Pipe {
  Pipe() {
    const std::wstring name =
        LR"(\\.\pipe\korvu-bench-calls-)" + KorvuISD::UnsignedDecimal(GetCurrentProcessId());
    service = PipeHandle(CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                          PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE, 1,
                                          kBufferBytes, kBufferBytes, 0, nullptr));
    Check(service.IsOpen(), "CreateNamedPipeW");
    client = PipeHandle(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
    Check(client.IsOpen(), "CreateFileW");
  }

  PipeHandle service;
  PipeHandle client;
};

void MeasureEvents(size_t count, nlohmann::json& costs) {
  const EventHandle event = CreateManualResetEvent();
  const EventHandle other = CreateManualResetEvent();
  costs["CreateEventW, CloseHandle"] =
      Cost(count, [] { const EventHandle made = CreateManualResetEvent(); });
  costs["ResetEvent"] = Cost(count, [&] { ResetEvent(event.Get()); });
  costs["SetEvent"] = Cost(count, [&] { SetEvent(event.Get()); });
  costs["WaitForSingleObject"] = Cost(count, [&] { WaitForSingleObject(event.Get(), 1000); });
  const std::array<HANDLE, 3> events = {other.Get(), other.Get(), event.Get()};
  costs["WaitForMultipleObjects"] =
      Cost(count, [&] { WaitForMultipleObjects(3, events.data(), FALSE, INFINITE); });
}

void MeasurePipe(size_t count, nlohmann::json& costs) {
  const Pipe pipe;
  const EventHandle event = CreateManualResetEvent();
  std::array<char, kBufferBytes> buffer{};
  DWORD byteCount = 0;
  OVERLAPPED overlapped{};
  const auto begin = [&] {
    overlapped = OVERLAPPED{};
    overlapped.hEvent = event.Get();
  };
  costs["ReadFile, CancelIoEx, GetOverlappedResult"] = Cost(count, [&] {
    begin();
    ReadFile(pipe.client.Get(), buffer.data(), kBufferBytes, nullptr, &overlapped);
    CancelIoEx(pipe.client.Get(), &overlapped);
    GetOverlappedResult(pipe.client.Get(), &overlapped, &byteCount, TRUE);
  });
  costs["WriteFile, and a ReadFile that finds its message"] = Cost(count, [&] {
    begin();
    WriteFile(pipe.client.Get(), buffer.data(), kMessageBytes, nullptr, &overlapped);
    begin();
    ReadFile(pipe.service.Get(), buffer.data(), kBufferBytes, nullptr, &overlapped);
  });
  costs["GetOverlappedResult"] =
      Cost(count, [&] { GetOverlappedResult(pipe.service.Get(), &overlapped, &byteCount, FALSE); });
}

// The peer's.
void MeasurePort(size_t count, nlohmann::json& costs) {
  const EventHandle port(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
  Check(port.IsOpen(), "CreateIoCompletionPort");
  costs["PostQueuedCompletionStatus, GetQueuedCompletionStatus"] = Cost(count, [&] {
    DWORD byteCount = 0;
    ULONG_PTR key = 0;
    LPOVERLAPPED overlapped = nullptr;
    PostQueuedCompletionStatus(port.Get(), 0, 0, nullptr);
    GetQueuedCompletionStatus(port.Get(), &byteCount, &key, &overlapped, 1000);
  });
}

}  // namespace

nlohmann::json MeasureCalls(size_t count) {
  nlohmann::json costs;
  MeasureEvents(count, costs);
  MeasurePipe(count, costs);
  MeasurePort(count, costs);
  return costs;
}

}  // namespace bench
