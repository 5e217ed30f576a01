// The floor: the calls of the platform that the library makes for each exchange, for each turn of
// its thread and for each setter, in their order, and next to nothing else. What the library takes
// beyond this client is its own doing.
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include <windows.h>

#include "clients/client.h"
#include "clients/pipes.h"
#include "platform/unique_handle.h"

namespace bench {

// Calls that the library makes for its failure reports and its order of work, and that the same
// conversation could do without. Each can be left out, to see what it costs.
struct FloorCalls {
  bool eventPerExchange = true;  // created and closed for each, not kept
  bool resets = true;            // though each new operation clears its event by itself
  bool signalPerMessage = true;  // the send event is reset and set for each, not left signalled
  bool reissuedRead = true;      // withdrawn and started anew in each turn, not left pending
};

class FloorClient final : public Client {
 public:
  FloorClient(Arrivals& arrivals, FloorCalls calls);
  ~FloorClient() override { Disconnect(); }

  Sample Connect() override;
  void Disconnect() override;
  void SetTilt(uint32_t value) override;
  Sample RunExchanges(size_t pairs) override;

 private:
  enum class Read { kNone, kPending, kDone };

  static DWORD WINAPI ThreadMain(void* parameter);
  void Run();
  void TakeRead();
  void StartRead();
  void Receive();
  void Send();
  bool SendOne();
  void Exchange(const std::wstring& message, HANDLE event);
  void Queue(std::vector<std::wstring> messages);
  Sample WaitDrained(const Sample& begin);

  const FloorCalls calls;
  Pipes pipes;
  KorvuISD::EventHandle shutdownEvent;
  KorvuISD::EventHandle sendEvent;
  KorvuISD::EventHandle readEvent;
  KorvuISD::EventHandle keptEvent;  // instead of one for each exchange
  KorvuISD::EventHandle drained;
  KorvuISD::EventHandle thread;

  std::recursive_mutex mutex;
  std::deque<std::wstring> queue;
  Sample drainedAt;
  bool wantsDrained = false;

  Read read = Read::kNone;
  OVERLAPPED reading{};
  std::array<wchar_t, 512> announced;
  std::wstring announcement;
  std::array<wchar_t, 512> piece;
  std::wstring reply;
};

}  // namespace bench
