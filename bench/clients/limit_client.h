// The limit: the same messages with the fewest calls. One blocking call takes a whole exchange, and
// one a whole announcement; there is no queue, no time-out, and no way to shut down in an exchange.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "clients/client.h"
#include "clients/pipes.h"
#include "platform/unique_handle.h"

namespace bench {

class LimitClient final : public Client {
 public:
  explicit LimitClient(Arrivals& arrivals)
      : Client(arrivals), announced(kBufferCodeUnits), reply(kBufferCodeUnits) {}
  ~LimitClient() override { Disconnect(); }

  Sample Connect() override;
  void Disconnect() override;
  void SetTilt(uint32_t value) override;
  Sample RunExchanges(size_t pairs) override;

 private:
  static constexpr size_t kBufferCodeUnits = 32 * 1024;

  static DWORD WINAPI ReaderMain(void* parameter);
  void Exchange(const std::wstring& message);

  Pipes pipes;
  KorvuISD::EventHandle reader;
  std::vector<wchar_t> announced;
  std::vector<wchar_t> reply;
};

}  // namespace bench
