// One message at a time, in the order of the queue, each after the reply to the one before.

#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

class SendTurn : public TransportTest {
 protected:
  std::vector<std::wstring> RequestsOfEraser() {
    return {ScriptedService::SetMessage(Key(kEraser), L""), ValueRequestOf(kEraser),
            ValueRequestOf(kEraser + 2)};
  }

  static constexpr int kEraser = 13;  // its name is two further on
};

TEST_F(SendTurn, ThreeMessagesOfOneCallAreThreeWritesWithThreeReplies) {
  PlatformCalls calls(library);
  ConnectAndForget();
  calls.Forget();
  library.KorvuISD_SetEraserSinglePress(nullptr, 1);
  EXPECT_EQ(service.WaitForRequests(3), RequestsOfEraser());
  Settle();
  // Write, read, write, read: no message leaves before the reply to the one before.
  std::vector<Function> order;
  for (const PlatformCall& call : calls.AllCalls()) {
    if (call.on != On::kDuplexPipe || call.function == Function::kGetOverlappedResult) continue;
    order.push_back(call.function);
  }
  EXPECT_EQ(order, (std::vector<Function>{Function::kWriteFile, Function::kReadFile,
                                          Function::kWriteFile, Function::kReadFile,
                                          Function::kWriteFile, Function::kReadFile}));
  EXPECT_EQ(service.RequestTexts(), RequestsOfEraser());
}

TEST_F(SendTurn, TheNextMessageWaitsForTheReply) {
  PlatformCalls calls(library);
  ConnectAndForget();
  calls.Forget();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request.starts_with(L"{\"GetVal\"")) return std::nullopt;
    return Reaction::Hold(kAck);
  });
  library.KorvuISD_SetEraserSinglePress(nullptr, 1);
  service.WaitForHeld();
  // The service may have the message before the call that wrote it has returned.
  ASSERT_TRUE(calls.WaitForCall(Function::kWriteFile, On::kDuplexPipe));
  EXPECT_EQ(calls.Calls(Function::kWriteFile, On::kDuplexPipe).size(), 1u);
  service.ReleaseHeld();
  EXPECT_EQ(service.WaitForRequests(3), RequestsOfEraser());
}

TEST_F(SendTurn, CallersDoNotWaitForTheServiceAndTheirMessagesKeepTheirOrder) {
  ConnectAndForget();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Hold(kAck);
    return std::nullopt;
  });
  SendManual(Marker());
  service.WaitForHeld();
  std::vector<std::wstring> expected = {Marker()};
  for (int i = 0; i < 100; ++i) {
    library.KorvuISD_SetTipSensitivity(i, 0);
    expected.push_back(ScriptedService::SetMessage(Key(kPressureCurve), std::to_wstring(i)));
    expected.push_back(ValueRequestOf(kPressureCurve));
  }
  EXPECT_EQ(service.RequestTexts().size(), 1u);
  service.ReleaseHeld();
  EXPECT_EQ(service.WaitForRequests(expected.size()), expected);
}

// The signal of a message that is queued while another is on its way must not be lost.
TEST_F(SendTurn, AMessageQueuedDuringTheLastExchangeIsSent) {
  PlatformCalls calls(library);
  ConnectAndForget();
  for (int i = 0; i < 20; ++i) {
    // Just before the last event of the exchange is over, with an empty queue.
    calls.Intercept(Function::kResetEvent, On::kExchangeEvent,
                    [this, i](const PlatformCalls::Intercepted& call) {
                      SendManual(Marker(i), 2);
                      return call.real();
                    });
    SendManual(LR"({"first":"x"})");
    ASSERT_TRUE(replies.WaitFor(2 * static_cast<size_t>(i) + 2));
  }
}

TEST_F(SendTurn, AMessageQueuedBetweenTheResetAndTheTakingIsSentOnce) {
  PlatformCalls calls(library);
  ConnectAndForget();
  calls.Intercept(Function::kResetEvent, On::kSendEvent,
                  [this](const PlatformCalls::Intercepted& call) {
                    const DWORD result = call.real();
                    SendManual(Marker(2), 2);
                    return result;
                  });
  SendManual(Marker(1), 1);
  ASSERT_TRUE(replies.WaitFor(2));
  Settle();
  EXPECT_EQ(service.RequestTexts(), (std::vector<std::wstring>{Marker(1), Marker(2)}));
}

TEST_F(SendTurn, AFailedMessageIsNotSentAgainAndTheRestOfTheQueueIsDiscarded) {
  ConnectAndForget();
  Freshen();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker(1)) return Reaction::Hold(L"no acknowledgement");
    return std::nullopt;
  });
  SendManual(Marker(1), 1);
  service.WaitForHeld();
  library.KorvuISD_SetTipSensitivity(3, 0);
  service.ReleaseHeld();
  service.WaitForConnections(2);
  service.WaitForBatch();
  SendManual(Marker(2), 2);
  ASSERT_TRUE(replies.WaitFor(2));
  std::vector<std::wstring> expected = Batch();
  expected.insert(expected.begin(), Marker(1));
  expected.push_back(Marker(2));
  EXPECT_EQ(service.RequestTexts(), expected);
  ExpectFreshConnection(2);
}

// Priorities
// ----------------------------------------------------------------------------------------

class Priority : public SendTurn {
 protected:
  void SetUp() override {
    ConnectAndForget();
    recorder.Forget();
    // The sync thread finds all signals there at once when it comes to its wait.
    calls.Intercept(Function::kWaitForAny, On::kSyncThreadWait,
                    [gate = gate](const PlatformCalls::Intercepted& call) {
                      gate.Pass();
                      return call.real();
                    });
    service.Announce(Key(kAlertDelay), L"1");
    ASSERT_TRUE(gate.WaitForArrival());
    recorder.Forget();
    service.Announce(Key(kKeystrokes), L"announced");
    service.WaitUntilAnnounced();
    library.KorvuISD_StartKeyCapture();
  }

  PlatformCalls calls{library};
  Gate gate;
};

TEST_F(Priority, SendingGoesBeforeAnAnnouncementThatHasArrived) {
  size_t announcedBeforeSent = 99;
  service.OnRequest([&](const std::wstring&) -> std::optional<Reaction> {
    announcedBeforeSent = recorder.CountOf(kKeystrokesSlot);
    return std::nullopt;
  });
  gate.Open();
  ASSERT_TRUE(recorder.WaitForSlot(kKeystrokesSlot, 1));
  EXPECT_EQ(service.RequestTexts().size(), 1u);
  EXPECT_EQ(announcedBeforeSent, 0u);
}

TEST_F(Priority, ShutdownGoesBeforeBothAndNothingMoreHappens) {
  std::thread shutdown([this] { library.KorvuISD_Shutdown(); });
  EXPECT_TRUE(calls.WaitForCall(Function::kSetEvent, On::kShutdownEvent));
  gate.Open();
  shutdown.join();
  service.WaitForDisconnect();
  EXPECT_TRUE(service.RequestTexts().empty());
  EXPECT_EQ(recorder.CountOf(kKeystrokesSlot), 0u);
}

class ShutdownOfAFullQueue : public SendTurn {};

TEST_F(ShutdownOfAFullQueue, SendsNothingMore) {
  PlatformCalls calls(library);
  ConnectAndForget();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Hold(kAck);
    return std::nullopt;
  });
  SendManual(Marker());
  service.WaitForHeld();
  for (int i = 0; i < 100; ++i) library.KorvuISD_SetTipSensitivity(i, 0);
  SendManual(Marker(2), 2);
  std::thread shutdown([this] { library.KorvuISD_Shutdown(); });
  EXPECT_TRUE(calls.WaitForCall(Function::kSetEvent, On::kShutdownEvent));
  service.ReleaseHeld();
  shutdown.join();
  service.WaitForDisconnect();
  EXPECT_EQ(service.RequestTexts(), std::vector<std::wstring>{Marker()});
  // The exchange that was underway comes to its end; the others are never answered.
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
  ASSERT_TRUE(calls.WaitForLiveThreads(0));
}

}  // namespace
