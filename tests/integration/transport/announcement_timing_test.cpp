// Announcements that arrive at awkward moments of a turn are dealt with all the same, once each.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

class AnnouncementTiming : public TransportTest {
 protected:
  void AnnounceText(const std::wstring& text) { service.Announce(Key(kKeystrokes), text); }

  void ExpectTexts(const std::vector<std::wstring>& texts) {
    ASSERT_TRUE(recorder.WaitForSlot(kKeystrokesSlot, texts.size()));
    Settle();
    const auto calls = recorder.CallsOf(kKeystrokesSlot);
    ASSERT_EQ(calls.size(), texts.size());
    for (size_t i = 0; i < texts.size(); ++i) {
      EXPECT_TRUE(calls[i].arguments == arguments::Text(texts[i])) << "announcement " << i;
    }
  }

  static std::wstring LongText(wchar_t filler) { return std::wstring(1500, filler); }
};

// The read that was pending when the send turn began has finished by its end.
TEST_F(AnnouncementTiming, AnAnnouncementDuringASendTurnIsHandledAfterIt) {
  ConnectAndForget();
  service.OnRequest([](const std::wstring&) { return Reaction::Hold(LR"({"Ack":"1"})"); });
  SendManual(Marker());
  service.WaitForHeld();
  AnnounceText(L"first");
  AnnounceText(L"second");
  AnnounceText(L"third");
  service.WaitUntilAnnounced();
  EXPECT_EQ(recorder.CountOf(kKeystrokesSlot), 0u);
  service.OnRequest({});
  service.ReleaseHeld();
  ExpectTexts({L"first", L"second", L"third"});
  EXPECT_EQ(replies.Count(), 1u);
}

TEST_F(AnnouncementTiming, LongAnnouncementsDuringManySendTurnsArriveWhole) {
  ConnectAndForget();
  std::vector<std::wstring> texts;
  for (int i = 0; i < 40; ++i) {
    for (int setting = 0; setting < 5; ++setting) library.KorvuISD_SetTipSensitivity(i, 0);
    texts.push_back(LongText(static_cast<wchar_t>(L'A' + i % 26)) + std::to_wstring(i));
    AnnounceText(texts.back());
  }
  ExpectTexts(texts);
}

// A message in pieces is put together across send turns, whose replies are in pieces too.
TEST_F(AnnouncementTiming, PiecesOfAnAnnouncementAndOfAReplyDoNotMix) {
  ConnectAndForget();
  service.SetValue(Key(kKeystrokes), LongText(L'r'));
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Hold(LR"({"Ack":"1"})");
    return std::nullopt;
  });
  SendManual(Marker());
  service.WaitForHeld();
  AnnounceText(LongText(L'a'));
  service.WaitUntilAnnounced();
  SendManual(ValueRequestOf(kKeystrokes), 2);
  service.ReleaseHeld();
  // Sending goes before reading, so the reply comes first.
  ExpectTexts({LongText(L'r'), LongText(L'a')});
}

TEST_F(AnnouncementTiming, ASendTurnBetweenThePiecesOfAnAnnouncementDisturbsNothing) {
  PlatformCalls calls(library);
  ConnectAndForget();
  // After the first piece has been taken, and before the read of the second.
  calls.Intercept(
      Function::kReadFile, On::kSendOnlyPipe,
      [this](const PlatformCalls::Intercepted& call) {
        SendManual(Marker());
        return call.real();
      },
      0);
  AnnounceText(LongText(L'x'));
  AnnounceText(L"next");
  ExpectTexts({LongText(L'x'), L"next"});
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
}

// The pending read is withdrawn at the head of a turn; here it finishes at that very moment.
TEST_F(AnnouncementTiming, AnAnnouncementAtTheMomentOfTheWithdrawalKeepsItsPlace) {
  PlatformCalls calls(library);
  ConnectAndForget();
  bool wasTooLate = false;
  calls.Intercept(Function::kCancelIo, On::kSendOnlyPipe,
                  [&](const PlatformCalls::Intercepted& call) {
                    AnnounceText(L"just in time");
                    service.WaitUntilAnnounced();
                    const DWORD result = call.real();
                    wasTooLate = result == FALSE;
                    return result;
                  });
  SendManual(Marker());
  ASSERT_TRUE(calls.WaitUntilIntercepted());
  AnnounceText(L"after it");
  ExpectTexts({L"just in time", L"after it"});
  EXPECT_TRUE(wasTooLate);
}

TEST_F(AnnouncementTiming, ALongAnnouncementAtTheMomentOfTheWithdrawalKeepsItsPlace) {
  PlatformCalls calls(library);
  ConnectAndForget();
  calls.Intercept(Function::kCancelIo, On::kSendOnlyPipe,
                  [this](const PlatformCalls::Intercepted& call) {
                    AnnounceText(LongText(L'j'));
                    service.WaitUntilAnnounced();
                    return call.real();
                  });
  SendManual(Marker());
  ASSERT_TRUE(calls.WaitUntilIntercepted());
  ExpectTexts({LongText(L'j')});
}

TEST_F(AnnouncementTiming, AnAnnouncementBetweenTheWithdrawalAndTheNextReadIsRead) {
  PlatformCalls calls(library);
  ConnectAndForget();
  calls.Intercept(Function::kCancelIo, On::kSendOnlyPipe,
                  [this](const PlatformCalls::Intercepted& call) {
                    const DWORD result = call.real();
                    AnnounceText(L"just after");
                    service.WaitUntilAnnounced();
                    return result;
                  });
  SendManual(Marker());
  ASSERT_TRUE(calls.WaitUntilIntercepted());
  ExpectTexts({L"just after"});
}

// Whether the system finishes a read at once or later, its announcement is handled once.
TEST_F(AnnouncementTiming, AReadThatCompletesAtOnceIsSignalledByHand) {
  PlatformCalls calls(library);
  ConnectAndForget();
  calls.Intercept(Function::kReadFile, On::kSendOnlyPipe,
                  [this](const PlatformCalls::Intercepted& call) {
                    AnnounceText(L"at once");
                    return PlatformCalls::CompleteAtOnce(call);
                  });
  SendManual(Marker());
  ExpectTexts({L"at once"});
}

TEST_F(AnnouncementTiming, MalformedOnesInBetweenCostNothing) {
  ConnectAndForget();
  std::vector<std::wstring> texts;
  for (int i = 0; i < 300; ++i) {
    service.AnnounceRaw(L"garbage");
    service.AnnounceRaw(L"");
    texts.push_back(std::to_wstring(i));
    AnnounceText(texts.back());
    service.AnnounceRaw(std::wstring(2000, L'g'));
    service.Announce(Key(kTilt), L"no number");
    if (i % 10 == 0) library.KorvuISD_SetTipSensitivity(i, 0);
  }
  ExpectTexts(texts);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_F(AnnouncementTiming, AnnouncementsDuringTheBatchArrive) {
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == ScriptedService::kProbe) return Reaction::Hold(LR"({"Ack":"1"})");
    return std::nullopt;
  });
  library.KorvuISD_SetAPIVersion(9);
  Register(Context(1));
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForHeld();
  for (int i = 1; i <= 200; ++i) service.Announce(Key(kTilt), std::to_wstring(i));
  service.ReleaseHeld();
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 200));
  const auto calls = recorder.CallsOf(kTiltSlot);
  for (size_t i = 0; i < 200; ++i) EXPECT_EQ(calls[i].arguments, std::to_wstring(i + 1));
}

}  // namespace
