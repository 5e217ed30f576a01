// What the tests of the transport start with: a service, and settings that make things visible.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "integration/integration_test.h"
#include "integration/transport/manual_replies.h"
#include "integration/transport/platform_calls.h"
#include "support/gate.h"

namespace support {

// The service's "done" to what asks for no value.
inline const std::wstring kAck = LR"({"Ack":"1"})";

// Too long for one write to get through: the pipe takes it when the service reads.
inline const std::wstring kLongMessage(300000, L'm');

// What the platform says of a handle that is closed.
inline constexpr DWORD kInvalidHandle = 6;

class TransportTest : public IntegrationTest {
 protected:
  // An earlier test of this process may have had replies.
  TransportTest() {
    replies.WhenCalled({});
    replies.Forget();
  }

  // Settings by index, and the slots of their callbacks.
  static constexpr int kAlertDelay = 114;
  static constexpr int kAlertDelaySlot = 9;
  static constexpr int kPressureCurve = 116;
  // Hands over every value as it is, the same one twice and the empty one too.
  static constexpr int kKeystrokes = 118;
  static constexpr int kKeystrokesSlot = 12;

  // A quiet connection: one wait, two pipes and the event of the announcements.
  static const std::map<On, size_t>& QuietHandles();

  void TraceOn() { library.KorvuISD_SetLogLevel(KorvuISD_LogLevelInfo); }

  // The probe and the value requests, in order.
  static std::vector<std::wstring> Batch();

  // Until all that was asked and announced before has been dealt with.
  void Settle();

  // A connection on which nothing is on its way, and no record of how it came about.
  void ConnectAndForget();

  // Silently changes a value of the service, so that only a new connection brings it.
  void Freshen();
  // Expects that connection `number` comes, sends the batch, and brings what Freshen changed.
  void ExpectFreshConnection(int number);

  // Until the sync thread waits for events and nothing more comes into `trace`, which is then
  // empty.
  void SettleAndForget(TraceRecorder& trace);
  // Expects these transport lines since SettleAndForget, and no others.
  void ExpectLines(TraceRecorder& trace, const std::vector<std::wstring>& expected);

  // A manual request for the value of setting `index`.
  std::wstring ValueRequestOf(int index) const { return ScriptedService::ValueRequest(Key(index)); }

  void SendManual(const std::wstring& message, uintptr_t context = 1) {
    library.SendManual(message.c_str(), Context(context), ManualReplies::kRecord);
  }

  // Sent and answered with `1`, and so a sign that everything before it is through.
  static std::wstring Marker(int number = 0) {
    return LR"({"marker":")" + std::to_wstring(number) + LR"("})";
  }

  ScriptedService service;
  ManualReplies& replies = ManualReplies::Instance();

 private:
  int32_t lastFence = 1000000;
  int32_t lastFresh = 2000000;
};

// Lines that end as all do.
inline std::wstring Line(const std::wstring& text) {
  return text + L"\r\n";
}

// Only lines that the transport writes about announcements, requests and replies.
std::vector<std::wstring> TransportLines(const std::vector<std::wstring>& lines);

// "N bytes" of a message, as the trace counts them.
inline std::wstring ByteCount(const std::wstring& message) {
  return std::to_wstring(message.size() * sizeof(wchar_t));
}

}  // namespace support
