#include "integration/transport/transport_test.h"

#include <array>
#include <string>
#include <string_view>

namespace support {

const std::map<On, size_t>& TransportTest::QuietHandles() {
  static const std::map<On, size_t> handles = {
      {On::kSendOnlyPipe, 1}, {On::kDuplexPipe, 1}, {On::kReadEvent, 1}};
  return handles;
}

std::vector<std::wstring> TransportTest::Batch() {
  std::vector<std::wstring> batch = {std::wstring(ScriptedService::kProbe)};
  for (const int index : expected::HandledIndices()) {
    batch.push_back(ScriptedService::ValueRequest(Key(index)));
  }
  return batch;
}

void TransportTest::Settle() {
  // An announcement is dealt with when nothing is left to send.
  const size_t before = recorder.CountOf(kAlertDelaySlot);
  service.Announce(Key(kAlertDelay), std::to_wstring(++lastFence));
  ASSERT_TRUE(recorder.WaitForSlot(kAlertDelaySlot, before + 1));
}

void TransportTest::ConnectAndForget() {
  ConnectTo(service);
  Settle();
  service.Forget();
  recorder.Forget();
}

void TransportTest::Freshen() {
  service.SetValue(Key(kTilt), std::to_wstring(++lastFresh));
}

void TransportTest::ExpectFreshConnection(int number) {
  service.WaitForConnections(number);
  service.WaitForBatch();
  Settle();
  std::vector<std::wstring> requested;
  for (const Request& request : service.Requests()) {
    if (request.connection == number) requested.push_back(request.text);
  }
  ASSERT_GE(requested.size(), Batch().size());
  requested.resize(Batch().size());
  EXPECT_EQ(requested, Batch());
  const auto calls = recorder.CallsOf(kTiltSlot);
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.back().arguments, std::to_wstring(lastFresh));
}

void TransportTest::SettleAndForget(TraceRecorder& trace) {
  Settle();
  ASSERT_TRUE(trace.WaitForLines([](const std::vector<std::wstring>& lines) {
    return !lines.empty() && lines.back() == Line(L"SyncThread: read start.");
  }));
  trace.Forget();
}

void TransportTest::ExpectLines(TraceRecorder& trace, const std::vector<std::wstring>& expected) {
  std::vector<std::wstring> found;
  EXPECT_TRUE(trace.WaitForLines([&](const std::vector<std::wstring>& lines) {
    found = TransportLines(lines);
    return found.size() >= expected.size();
  }));
  EXPECT_EQ(found, expected);
  // What comes next must be the announcement of the fence.
  const size_t count = found.size();
  Settle();
  found = TransportLines(trace.Lines());
  ASSERT_GT(found.size(), count);
  EXPECT_TRUE(
      found[count].find(L"; message " + ScriptedService::SetMessage(Key(kAlertDelay),
                                                                    std::to_wstring(lastFence))) !=
      std::wstring::npos);
}

std::vector<std::wstring> TransportLines(const std::vector<std::wstring>& lines) {
  constexpr std::array<std::wstring_view, 6> kOpenings = {
      L"SyncThread: ", L"SendJSON: ", L"ReceiveAck: ", L"Get value: ", L"Set value: ", L"Unknown "};
  std::vector<std::wstring> found;
  for (const std::wstring& line : lines) {
    for (const std::wstring_view opening : kOpenings) {
      if (line.starts_with(opening)) found.push_back(line);
    }
  }
  return found;
}

}  // namespace support
