// A value that does not convert is dropped: one line, and the thread goes on.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

struct BadValue {
  const char* name;
  std::wstring value;
  std::wstring failure;
};

void PrintTo(const BadValue& bad, std::ostream* out) {
  *out << bad.name;
}

class ValueThatDoesNotConvert : public TransportTest, public testing::WithParamInterface<BadValue> {
 protected:
  void SetUp() override {
    TraceOn();
    ConnectTo(service);
    service.Announce(Key(kTilt), L"5");
    ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
    SettleAndForget(trace);
  }

  std::wstring DroppedLine() const {
    return Line(L"SyncThread: dropped the value of " + Key(kTilt) + L": " + GetParam().failure +
                L".");
  }

  // Neither the bad value nor a copy of the old one is told; the next good one is.
  void ExpectTheNextValueWorks() {
    service.Announce(Key(kTilt), L"5");
    service.Announce(Key(kTilt), L"6");
    Settle();
    EXPECT_EQ(recorder.CallsOf(kTiltSlot),
              (std::vector<Call>{{kTiltSlot, Context(1), arguments::Value(5)},
                                 {kTiltSlot, Context(1), arguments::Value(6)}}));
    EXPECT_EQ(service.ConnectionCount(), 1);
    EXPECT_EQ(calls.LiveThreads(), 1u);
  }

  PlatformCalls calls{library};
  TraceRecorder trace{library};
};

TEST_P(ValueThatDoesNotConvert, IsDroppedFromAnAnnouncement) {
  const std::wstring message = ScriptedService::SetMessage(Key(kTilt), GetParam().value);
  service.AnnounceRaw(message);
  ExpectLines(
      trace,
      {Line(L"SyncThread: read " + ByteCount(message) + L" bytes; message " + message + L"."),
       Line(L"SyncThread: parsed key " + Key(kTilt) + L"; parsed value " + GetParam().value + L"."),
       DroppedLine(), Line(L"SyncThread: read start.")});
  ExpectTheNextValueWorks();
}

TEST_P(ValueThatDoesNotConvert, IsDroppedFromAValueReplyAndStillToldToTheRequester) {
  service.SetValue(Key(kTilt), GetParam().value);
  SendManual(ValueRequestOf(kTilt));
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), Key(kTilt), GetParam().value}}));
  EXPECT_TRUE(trace.Has(DroppedLine()));
  ExpectTheNextValueWorks();
}

INSTANTIATE_TEST_SUITE_P(
    All, ValueThatDoesNotConvert,
    testing::Values(BadValue{"Letters", L"abc", L"invalid stoi argument"},
                    BadValue{"ASignAlone", L"-", L"invalid stoi argument"},
                    BadValue{"ElevenDigits", L"12345678901", L"stoi argument out of range"},
                    BadValue{"OneMoreThanFits", L"2147483648", L"stoi argument out of range"},
                    BadValue{"AHundredDigits", std::wstring(100, L'9'),
                             L"stoi argument out of range"}),
    [](const auto& tested) { return tested.param.name; });

class BatchOfBadValues : public TransportTest {};

// Not even a service that answers nothing but nonsense costs the application its process.
TEST_F(BatchOfBadValues, ComesThroughAndTheConnectionStays) {
  for (const auto& [index, key] : expected::SettingKeys()) service.SetValue(key, L"abc");
  ConnectTo(service);
  service.Announce(Key(kTilt), L"5");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  for (const auto& [index, key] : expected::SettingKeys()) {
    service.Announce(key, L"99999999999");
    service.Announce(key, L"");
    service.Announce(key, L"-");
  }
  Settle();
  EXPECT_EQ(service.ConnectionCount(), 1);
}

}  // namespace
