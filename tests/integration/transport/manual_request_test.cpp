// Messages of the application's own making, and the callbacks that get their replies.

#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

class ManualRequest : public TransportTest {
 protected:
  // Keeps the sync thread in an exchange, so that what follows is queued together.
  void HoldTheQueue() {
    service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
      if (request == kHolder) return Reaction::Hold(kAck);
      return std::nullopt;
    });
    library.SendManual(kHolder, Context(99), [](void*, const wchar_t*, size_t*, size_t) {});
    service.WaitForHeld();
  }
  // And all of it is sent.
  void ReleaseTheQueue() {
    service.ReleaseHeld();
    Settle();
  }

  void ExpectReplies(const std::vector<ManualReply>& expected) {
    EXPECT_TRUE(replies.WaitFor(expected.size()));
    Settle();
    EXPECT_EQ(replies.All(), expected);
    EXPECT_FALSE(replies.HasMalformedCall());
  }

  static constexpr const wchar_t* kHolder = LR"({"hold":"it"})";
};

TEST_F(ManualRequest, ForAValueGetsTheKeyAndTheValue) {
  ConnectAndForget();
  service.SetValue(L"any\\\\key", L"some value");
  SendManual(LR"({"GetVal":"any\\key"})");
  ExpectReplies({{Context(1), LR"(any\\key)", L"some value"}});
}

TEST_F(ManualRequest, ForAnEmptyValueGetsTheKeyAlone) {
  ConnectAndForget();
  SendManual(LR"({"GetVal":"any\\key"})");
  ExpectReplies({{Context(1), LR"(any\\key)", L""}});
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_F(ManualRequest, ToSetAValueGetsTheValueAndAOne) {
  ConnectAndForget();
  SendManual(LR"({"k":"some value"})");
  ExpectReplies({{Context(1), L"some value", L"1"}});
}

TEST_F(ManualRequest, ThatIsTheProbeGetsAQuestionMarkAndAOne) {
  ConnectAndForget();
  SendManual(LR"({"Connected":"?"})");
  ExpectReplies({{Context(1), L"?", L"1"}});
}

TEST_F(ManualRequest, IsSentAsItStands) {
  ConnectAndForget();
  const std::wstring message = L"{ \"a\" : [ \\ \x00E9\xD83D\xDE00 ] }\r\n";
  SendManual(message);
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(service.RequestTexts(), std::vector<std::wstring>{message});
}

TEST_F(ManualRequest, WhoseValueHoldsANulGetsAllOfIt) {
  ConnectAndForget();
  const std::wstring value(L"a\0b", 3);
  service.SetValue(L"k", value);
  SendManual(LR"({"GetVal":"k"})");
  ExpectReplies({{Context(1), L"k", value}});
}

struct ShortMessage {
  const wchar_t* message;
  const wchar_t* requestPart;
};

class ShortManualRequest : public ManualRequest,
                           public testing::WithParamInterface<ShortMessage> {};

TEST_P(ShortManualRequest, HasWhatThereIsFromTheThirdCharacterOn) {
  ConnectAndForget();
  SendManual(GetParam().message);
  ExpectReplies({{Context(1), GetParam().requestPart, L"1"}});
  EXPECT_EQ(service.RequestTexts(), std::vector<std::wstring>{GetParam().message});
}

INSTANTIATE_TEST_SUITE_P(Characters, ShortManualRequest,
                         testing::Values(ShortMessage{L"", L""}, ShortMessage{L"a", L""},
                                         ShortMessage{L"ab", L""}, ShortMessage{L"abc", L"c"},
                                         ShortMessage{L"abcd", L""}, ShortMessage{L"abcde", L"c"},
                                         ShortMessage{LR"({"a":")", L""},
                                         ShortMessage{LR"({"a":"b)", L"b"}));

// Who is called, and how often
// ----------------------------------------------------------------------

TEST_F(ManualRequest, OfTwoContextsIsAnsweredInTheirOrderByTheFirstOfTwoCopies) {
  ConnectAndForget();
  HoldTheQueue();
  SendManual(Marker(), 5);
  SendManual(Marker(), 3);
  size_t sentWhenCalled = 0;
  replies.WhenCalled([&](const ManualReply& reply) {
    if (reply.context == Context(5)) sentWhenCalled = service.Requests().size();
  });
  ReleaseTheQueue();
  ExpectReplies({{Context(3), L"0", L"1"}, {Context(5), L"0", L"1"}});
  EXPECT_EQ(service.RequestTexts(), (std::vector<std::wstring>{kHolder, Marker(), Marker()}));
  EXPECT_EQ(sentWhenCalled, 2u);
}

TEST_F(ManualRequest, MadeTwiceForOneContextKeepsTheSecondCallback) {
  ConnectAndForget();
  HoldTheQueue();
  library.SendManual(Marker().c_str(), Context(1), ManualReplies::kRecord);
  library.SendManual(Marker().c_str(), Context(1), ManualReplies::kRecordAsOther);
  ReleaseTheQueue();
  ExpectReplies({{Context(1), L"0", L"1", 1}});
  EXPECT_EQ(service.RequestTexts(), (std::vector<std::wstring>{kHolder, Marker(), Marker()}));
}

TEST_F(ManualRequest, MadeAgainAfterItsAnswerIsAnsweredAgain) {
  ConnectAndForget();
  for (size_t i = 1; i <= 3; ++i) {
    SendManual(Marker());
    ASSERT_TRUE(replies.WaitFor(i));
  }
  ExpectReplies({{Context(1), L"0", L"1"}, {Context(1), L"0", L"1"}, {Context(1), L"0", L"1"}});
}

TEST_F(ManualRequest, OfAnotherTextIsAnotherRequest) {
  ConnectAndForget();
  HoldTheQueue();
  SendManual(LR"({"k":"a"})");
  SendManual(LR"({"k":"A"})");
  SendManual(LR"({"k":"a"} )");
  ReleaseTheQueue();
  ExpectReplies({{Context(1), L"a", L"1"}, {Context(1), L"A", L"1"}, {Context(1), L"a\"", L"1"}});
}

// A setter's message of the same text is as good as a copy of the request.
TEST_F(ManualRequest, IsAnsweredByASettersMessageOfItsText) {
  ConnectAndForget();
  HoldTheQueue();
  library.KorvuISD_SetTipSensitivity(3, 0);
  SendManual(ScriptedService::SetMessage(Key(kPressureCurve), L"3"));
  size_t sentWhenCalled = 0;
  replies.WhenCalled([&](const ManualReply&) { sentWhenCalled = service.Requests().size(); });
  ReleaseTheQueue();
  ExpectReplies({{Context(1), L"3", L"1"}});
  EXPECT_EQ(sentWhenCalled, 2u);
  EXPECT_EQ(service.Requests().size(), 4u);
}

TEST_F(ManualRequest, TakesANullContext) {
  ConnectAndForget();
  SendManual(Marker(), 0);
  ExpectReplies({{nullptr, L"0", L"1"}});
}

TEST_F(ManualRequest, CopiesItsMessage) {
  ConnectAndForget();
  HoldTheQueue();
  std::wstring message = Marker();
  SendManual(message);
  message.assign(message.size(), L'x');
  ReleaseTheQueue();
  ExpectReplies({{Context(1), L"0", L"1"}});
}

// Versions
// ----------------------------------------------------------------------------------------

class OlderVersion : public ManualRequest, public testing::WithParamInterface<int> {};

TEST_P(OlderVersion, SendsNothingAndCallsNobody) {
  ConnectTo(service);
  Settle();
  service.Forget();
  library.KorvuISD_SetAPIVersion(GetParam());
  SendManual(Marker(1), 1);
  library.KorvuISD_SetAPIVersion(9);
  SendManual(Marker(2), 2);
  ExpectReplies({{Context(2), L"2", L"1"}});
  // Nothing was registered either, so the same message finds nobody but its own sender.
  SendManual(Marker(1), 3);
  ExpectReplies({{Context(2), L"2", L"1"}, {Context(3), L"1", L"1"}});
  EXPECT_EQ(service.RequestTexts(), (std::vector<std::wstring>{Marker(2), Marker(1)}));
}

INSTANTIATE_TEST_SUITE_P(Api, OlderVersion, testing::Values(8, 7, 1, 0, -1));

TEST_F(ManualRequest, WorksForAVersionThatIsClampedToTheHighest) {
  ConnectAndForget();
  library.KorvuISD_SetAPIVersion(10);
  SendManual(Marker());
  ExpectReplies({{Context(1), L"0", L"1"}});
}

// Settings and the lock
// ---------------------------------------------------------------------------

TEST_F(ManualRequest, ForASettingReachesItsHandlerBeforeTheCallback) {
  ConnectAndForget();
  service.SetValue(Key(kTilt), L"42");
  size_t toldBefore = 0;
  replies.WhenCalled([&](const ManualReply&) { toldBefore = recorder.CountOf(kTiltSlot); });
  SendManual(ValueRequestOf(kTilt));
  ExpectReplies({{Context(1), Key(kTilt), L"42"}});
  EXPECT_EQ(toldBefore, 1u);
  EXPECT_EQ(recorder.CallsOf(kTiltSlot),
            (std::vector<Call>{{kTiltSlot, Context(1), arguments::Value(42)}}));
}

TEST_F(ManualRequest, IsAnsweredOnTheThreadOfTheOtherCallbacks) {
  ConnectAndForget();
  DWORD thread = 0;
  replies.WhenCalled([&](const ManualReply& reply) { thread = reply.thread; });
  service.SetValue(Key(kTilt), L"42");
  SendManual(ValueRequestOf(kTilt));
  ExpectReplies({{Context(1), Key(kTilt), L"42"}});
  EXPECT_EQ(thread, recorder.CallsOf(kTiltSlot)[0].thread);
  EXPECT_NE(thread, GetCurrentThreadId());
}

// Another thread gets into the library while the callback waits for it.
TEST_F(ManualRequest, IsAnsweredWithoutTheLock) {
  ConnectAndForget();
  replies.WhenCalled([this](const ManualReply&) {
    std::thread other([this] {
      library.KorvuISD_SetTipSensitivity(3, 0);
      Register(Context(2));
    });
    other.join();
  });
  SendManual(Marker());
  ExpectReplies({{Context(1), L"0", L"1"}});
  EXPECT_EQ(
      service.WaitForRequests(3),
      (std::vector<std::wstring>{Marker(), ScriptedService::SetMessage(Key(kPressureCurve), L"3"),
                                 ValueRequestOf(kPressureCurve)}));
}

TEST_F(ManualRequest, IsAnsweredWithoutTheLockAfterALoss) {
  ConnectAndForget();
  replies.WhenCalled([this](const ManualReply&) {
    std::thread other([this] { Register(Context(2)); });
    other.join();
  });
  HoldTheQueue();
  SendManual(Marker());
  Freshen();
  service.BreakBoth();
  ExpectFreshConnection(2);
  ExpectReplies({{Context(1), L"", L""}});
}

TEST_F(ManualRequest, IsAnsweredWithoutTheLockWhenAConnectionOpens) {
  library.KorvuISD_SetAPIVersion(9);
  replies.WhenCalled([this](const ManualReply&) {
    std::thread other([this] { Register(Context(2)); });
    other.join();
  });
  SendManual(Marker());
  ConnectTo(service);
  ExpectReplies({{Context(1), L"", L""}});
}

TEST_F(ManualRequest, MayBeMadeFromInsideItsCallback) {
  ConnectAndForget();
  replies.WhenCalled([this](const ManualReply& reply) {
    const auto context = reinterpret_cast<uintptr_t>(reply.context);
    // The same text and context again, and others.
    if (context == 1 && replies.Count() == 1) SendManual(Marker(), 1);
    if (context < 5) SendManual(Marker(static_cast<int>(context)), context + 1);
  });
  SendManual(Marker(), 1);
  ASSERT_TRUE(replies.WaitFor(6));
  Settle();
  // 1 is called twice. What it asks for the second time is asked for already, and so replaces that.
  EXPECT_EQ(
      replies.CountByContext(),
      (std::map<void*, size_t>{
          {Context(1), 2}, {Context(2), 1}, {Context(3), 1}, {Context(4), 1}, {Context(5), 1}}));
}

}  // namespace
