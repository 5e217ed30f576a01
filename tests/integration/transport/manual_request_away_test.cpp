// Manual requests that no service gets: each is answered once, with empty texts.

#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

class ManualRequestAway : public TransportTest {
 protected:
  void SetUp() override { library.KorvuISD_SetAPIVersion(9); }

  // After this nothing is on its way any more.
  void ExpectReplies(const std::vector<ManualReply>& expected) {
    EXPECT_TRUE(replies.WaitFor(expected.size()));
    SendManual(Marker(1000), 1000);
    auto all = expected;
    all.push_back({Context(1000), L"1000", L"1"});
    EXPECT_TRUE(replies.WaitFor(all.size()));
    Settle();
    EXPECT_EQ(replies.All(), all);
    EXPECT_FALSE(replies.HasMalformedCall());
  }
};

TEST_F(ManualRequestAway, MadeBeforeConnectIsAnsweredWhenTheConnectionOpens) {
  SendManual(Marker(1), 1);
  SendManual(Marker(2), 2);
  EXPECT_EQ(replies.Count(), 0u);
  ConnectTo(service);
  ExpectReplies({{Context(1), L"", L""}, {Context(2), L"", L""}});
  const auto texts = service.RequestTexts();
  EXPECT_EQ(std::ranges::count(texts, Marker(1)) + std::ranges::count(texts, Marker(2)), 0);
}

TEST_F(ManualRequestAway, MadeTwiceBeforeConnectIsAnsweredForEachContextOnce) {
  SendManual(Marker(1), 2);
  SendManual(Marker(1), 1);
  SendManual(Marker(1), 2);
  ConnectTo(service);
  ExpectReplies({{Context(1), L"", L""}, {Context(2), L"", L""}});
}

TEST_F(ManualRequestAway, MadeBeforeAConnectThatFailsIsAnsweredByTheOneThatSucceeds) {
  SendManual(Marker(1), 1);
  service.Vanish();
  EXPECT_EQ(library.KorvuISD_Connect(1), KorvuISD_ErrorFailed);
  EXPECT_EQ(replies.Count(), 0u);
  service.Return();
  ConnectTo(service);
  ExpectReplies({{Context(1), L"", L""}});
}

TEST_F(ManualRequestAway, MadeWhileTheServiceIsAwayIsAnsweredOnceByTheReturn) {
  TraceRecorder trace(library);
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  service.Vanish();
  // The loss has been handled when its thread looks for the pipe again.
  ASSERT_TRUE(trace.WaitForLine(Line(L"Connecting...")));
  SendManual(Marker(1), 1);
  SendManual(Marker(2), 2);
  Freshen();
  service.Return();
  ExpectFreshConnection(2);
  ExpectReplies({{Context(1), L"", L""}, {Context(2), L"", L""}});
}

TEST_F(ManualRequestAway, QueuedWhenTheConnectionIsLostIsAnsweredOnce) {
  ConnectTo(service);
  Settle();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker(1)) return Reaction::Hold(kAck);
    return std::nullopt;
  });
  SendManual(Marker(1), 1);
  service.WaitForHeld();
  for (uintptr_t context = 2; context <= 50; ++context) {
    SendManual(Marker(static_cast<int>(100 + context)), context);
  }
  Freshen();
  service.BreakBoth();
  ExpectFreshConnection(2);
  std::vector<ManualReply> expected = {{Context(1), L"1", L""}};
  for (uintptr_t context = 2; context <= 50; ++context) {
    expected.push_back({Context(context), L"", L""});
  }
  ExpectReplies(expected);
  const auto texts = service.RequestTexts();
  EXPECT_EQ(std::ranges::count(texts, Marker(102)), 0);
}

// Registered after the loss has taken all requests out, and before the new connection discards the
// queue.
TEST_F(ManualRequestAway, MadeInTheCallbackOfALostRequestIsAnsweredWhenTheConnectionOpens) {
  ConnectTo(service);
  Settle();
  replies.WhenCalled([this](const ManualReply& reply) {
    if (reply.context == Context(1)) SendManual(Marker(2), 2);
    // The same text and context as the one that is being answered.
    if (reply.context == Context(2) && replies.Count() == 2) SendManual(Marker(2), 2);
  });
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker(1)) return Reaction::Break();
    return std::nullopt;
  });
  Freshen();
  SendManual(Marker(1), 1);
  ExpectFreshConnection(2);
  // The first is failed by the break; the second is pending at the loss that follows; the third is
  // made while that is handled, and its message is discarded by the new connection.
  ExpectReplies({{Context(1), L"1", L""}, {Context(2), L"", L""}, {Context(2), L"", L""}});
}

TEST_F(ManualRequestAway, MadeInTheCallbackOfADiscardedRequestIsSent) {
  replies.WhenCalled([this](const ManualReply& reply) {
    if (reply.context == Context(1)) SendManual(Marker(2), 2);
  });
  SendManual(Marker(1), 1);
  ConnectTo(service);
  ExpectReplies({{Context(1), L"", L""}, {Context(2), L"2", L"1"}});
}

// Between its registration and the queueing of its message a request is in neither place.
TEST_F(ManualRequestAway, LostAtTheMomentOfItsMakingIsAnsweredOnce) {
  ConnectTo(service);
  for (int connection = 2; connection <= 20; ++connection) {
    Freshen();
    const auto context = static_cast<uintptr_t>(connection);
    std::thread application([&] {
      for (int i = 0; i < 20; ++i) {
        SendManual(Marker(static_cast<int>(context) * 100 + i),
                   context * 100 + static_cast<uintptr_t>(i));
      }
    });
    service.BreakBoth();
    application.join();
    ExpectFreshConnection(connection);
    ASSERT_TRUE(replies.WaitFor((context - 1) * 20));
  }
  SendManual(Marker(), 1);
  ASSERT_TRUE(replies.WaitFor(19 * 20 + 1));
  Settle();
  const auto counts = replies.CountByContext();
  EXPECT_EQ(counts.size(), 19u * 20 + 1);
  for (const auto& [context, count] : counts) EXPECT_EQ(count, 1u) << context;
}

TEST_F(ManualRequestAway, IsNotAnsweredAnyMoreAfterAShutdown) {
  PlatformCalls calls(library);
  ConnectTo(service);
  Settle();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker(1)) return Reaction::Hold(kAck);
    return std::nullopt;
  });
  SendManual(Marker(1), 1);
  service.WaitForHeld();
  SendManual(Marker(2), 2);
  std::thread shutdown([this] { library.KorvuISD_Shutdown(); });
  EXPECT_TRUE(calls.WaitForCall(Function::kSetEvent, On::kShutdownEvent));
  service.ReleaseHeld();
  shutdown.join();
  // A fresh client knows nothing of what the old one had queued.
  ConnectTo(service);
  SendManual(Marker(2), 3);
  ASSERT_TRUE(replies.WaitFor(2));
  Settle();
  EXPECT_EQ(replies.All(),
            (std::vector<ManualReply>{{Context(1), L"1", L"1"}, {Context(3), L"2", L"1"}}));
}

}  // namespace
