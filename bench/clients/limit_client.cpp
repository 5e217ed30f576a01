#include "clients/limit_client.h"

#include <string_view>

#include "clients/batch.h"
#include "settings/number_conversion.h"
#include "support/system_failure.h"
#include "transport/messages.h"

namespace bench {
namespace {

constexpr DWORD kCancelAgainMs = 10;

DWORD ByteCount(size_t codeUnits) {
  return static_cast<DWORD>(codeUnits * sizeof(wchar_t));
}

}  // namespace

Sample LimitClient::Connect() {
  const Sample begin = Now();
  pipes = OpenPipes(0);
  reader.Reset(CreateThread(nullptr, 0, ReaderMain, this, 0, nullptr));
  Check(reader.IsOpen(), "CreateThread");
  for (const std::wstring& message : ConnectionBatch()) Exchange(message);
  return Now() - begin;
}

void LimitClient::Disconnect() {
  if (!reader.IsOpen()) return;
  // Again and again: the reader may be between two reads.
  do CancelSynchronousIo(reader.Get());
  while (WaitForSingleObject(reader.Get(), kCancelAgainMs) != WAIT_OBJECT_0);
  reader.Reset();
  pipes = {};
}

void LimitClient::SetTilt(uint32_t value) {
  Exchange(KorvuISD::BuildSetMessage(TiltKey(), KorvuISD::UnsignedDecimal(value)));
  Exchange(KorvuISD::BuildValueRequest(TiltKey()));
}

Sample LimitClient::RunExchanges(size_t pairs) {
  const std::vector<std::wstring> batch = ExchangeBatch(pairs);
  const Sample begin = Now();
  for (const std::wstring& message : batch) Exchange(message);
  return Now() - begin;
}

DWORD WINAPI LimitClient::ReaderMain(void* parameter) {
  LimitClient& client = *static_cast<LimitClient*>(parameter);
  DWORD byteCount = 0;
  while (ReadFile(client.pipes.sendOnly.Get(), client.announced.data(),
                  ByteCount(client.announced.size()), &byteCount, nullptr)) {
    client.arrivals.Announcement({client.announced.data(), byteCount / sizeof(wchar_t)});
  }
  return 0;
}

void LimitClient::Exchange(const std::wstring& message) {
  DWORD byteCount = 0;
  // The function takes the request as something it could write to, which it does not.
  Check(TransactNamedPipe(pipes.duplex.Get(), const_cast<wchar_t*>(message.data()),
                          ByteCount(message.size()), reply.data(), ByteCount(reply.size()),
                          &byteCount, nullptr),
        "TransactNamedPipe");
  arrivals.Reply({reply.data(), byteCount / sizeof(wchar_t)});
}

}  // namespace bench
