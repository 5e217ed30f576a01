// Manual requests from several threads, while the service breaks the connection again and again:
// each is answered exactly once.

#include <array>
#include <atomic>
#include <stop_token>
#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

constexpr int kBreaks = 20;
constexpr size_t kThreads = 3;
constexpr size_t kOutstanding = 150;  // as many requests as may wait at a time

class ManualRequestStress : public TransportTest {
 protected:
  static std::wstring PartOf(uintptr_t context) { return L"part " + std::to_wstring(context); }

  // Requests with texts and contexts of their own, until told to stop.
  void MakeRequests(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      if (pause || made >= replies.Count() + kOutstanding) {
        static_cast<void>(replies.WaitFor(replies.Count() + 1, std::chrono::milliseconds(5)));
        continue;
      }
      const uintptr_t context = ++made;
      SendManual(ScriptedService::SetMessage(L"stress", PartOf(context)), context);
    }
  }

  void Break(int round) {
    // Whatever is to be broken is there: a session that takes announcements has begun.
    service.AnnounceRaw(L"x");
    service.WaitUntilAnnounced();
    switch (round % 4) {
      case 0:
        service.BreakBoth();
        break;
      case 1:
        service.BreakDuplex();
        break;
      case 2:
        // Sending goes before reading, so this loss is noticed when there is nothing left to send.
        pause = true;
        service.BreakSendOnly();
        break;
      default:
        service.Vanish();
        service.Return();
    }
  }

  std::atomic<size_t> made{0};
  std::atomic<bool> pause{false};
};

TEST_F(ManualRequestStress, EveryRequestIsAnsweredExactlyOnce) {
  PlatformCalls calls(library);
  ConnectTo(service);
  {
    std::array<std::jthread, kThreads> applications;
    for (std::jthread& application : applications) {
      application = std::jthread([this](const std::stop_token& stop) { MakeRequests(stop); });
    }
    for (int round = 0; round < kBreaks; ++round) {
      service.WaitForConnections(round + 1);
      // In the batch, right after it, or among the requests.
      service.Forget();
      service.WaitForRequests(static_cast<size_t>(round) * 37 % 190);
      Break(round);
      service.WaitForConnections(round + 2);
      pause = false;
    }
  }
  EXPECT_TRUE(replies.WaitFor(made));
  // Nobody is called again.
  Settle();
  SendManual(Marker(), 0);
  EXPECT_TRUE(replies.WaitFor(made + 1));

  const auto all = replies.All();
  EXPECT_EQ(all.size(), made + 1);
  EXPECT_EQ(replies.CountByContext().size(), made + 1);
  size_t acknowledged = 0;
  size_t lost = 0;
  for (const ManualReply& reply : all) {
    if (!reply.context) continue;
    const bool isEmpty = reply.requestPart.empty() && reply.value.empty();
    const bool isOfItsRequest =
        reply.requestPart == PartOf(reinterpret_cast<uintptr_t>(reply.context)) &&
        (reply.value == L"1" || reply.value.empty());
    EXPECT_TRUE(isEmpty || isOfItsRequest) << testing::PrintToString(reply);
    ++(reply.value.empty() ? lost : acknowledged);
  }
  EXPECT_GT(acknowledged, 0u);
  EXPECT_GT(lost, 0u);
  EXPECT_FALSE(replies.HasMalformedCall());
  EXPECT_TRUE(calls.WaitForLiveThreads(1));
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
}

}  // namespace
