// Input and output that the library has given up on ends before its memory and its pipe go.

#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

using namespace std::chrono_literals;

// Allocates, fills and frees in the library's process all the time, so that memory that was freed
// too early is in use again when a late reply is written to it.
class MemoryChurn {
 public:
  MemoryChurn() : thread([this] { Run(); }) {}
  ~MemoryChurn() {
    stop = true;
    thread.join();
  }
  MemoryChurn(const MemoryChurn&) = delete;
  MemoryChurn& operator=(const MemoryChurn&) = delete;

  bool FoundDamage() const { return damaged; }

 private:
  void Run() {
    for (size_t round = 0; !stop; ++round) {
      std::vector<std::vector<char>> blocks;
      for (size_t size = 16; size <= 4096; size += 48) blocks.emplace_back(size, 'c');
      std::this_thread::sleep_for(1ms);
      for (const auto& block : blocks) {
        if (std::ranges::count(block, 'c') != static_cast<std::ptrdiff_t>(block.size())) {
          damaged = true;
        }
      }
    }
  }

  std::atomic<bool> stop{false};
  std::atomic<bool> damaged{false};
  std::thread thread;
};

class LateIo : public TransportTest {
 protected:
  void ConnectQuiet() {
    ConnectTo(service);
    Settle();
  }
  // The answer to request `number`, whatever it is, and then a quiet connection.
  void ExpectAnswered(size_t number) {
    ASSERT_TRUE(replies.WaitFor(number));
    if (replies.All().back().value.empty()) {
      service.WaitForConnections(++connections);
      service.WaitForBatch();
    }
    Settle();
  }

  PlatformCalls calls{library};
  int connections = 1;
};

TEST_F(LateIo, RepliesJustAfterTheTimeOutHitNothing) {
  ConnectQuiet();
  MemoryChurn churn;
  size_t number = 0;
  // On a busy machine any of them may yet come in time, but for the last.
  for (const auto delay : {2050ms, 2100ms, 2250ms, 10000ms}) {
    service.OnRequest([delay](const std::wstring& request) -> std::optional<Reaction> {
      if (request == Marker()) return Reaction::Late(delay, kAck);
      return std::nullopt;
    });
    Freshen();
    SendManual(Marker(), ++number);
    ExpectAnswered(number);
  }
  ExpectFreshConnection(connections);
  EXPECT_GT(connections, 1);
  EXPECT_EQ(replies.Count(), number);
  EXPECT_FALSE(churn.FoundDamage());
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  EXPECT_TRUE(calls.WaitForLiveThreads(1));
}

// The same with a patience of some milliseconds, so that there is time for many.
TEST_F(LateIo, ManyRepliesAroundTheTimeOutHitNothing) {
  ConnectQuiet();
  MemoryChurn churn;
  size_t number = 0;
  for (int round = 0; round <= 60; ++round) {
    // The last one is late for certain: the connection after it asks for what is fresh.
    const auto delay = std::chrono::milliseconds(round < 60 ? 1 + round % 8 : 10000);
    const bool isLong = round % 3 == 0;
    service.OnRequest([=](const std::wstring& request) -> std::optional<Reaction> {
      if (request != Marker()) return std::nullopt;
      return Reaction::Late(delay, isLong ? kAck + std::wstring(3000, L'r') : kAck);
    });
    Freshen();
    calls.Intercept(
        Function::kWaitForOne, On::kExchangeEvent,
        [](const auto& call) { return WaitForSingleObjectHook::Real(call.handle, 4); }, 1);
    SendManual(Marker(), ++number);
    ExpectAnswered(number);
  }
  ExpectFreshConnection(connections);
  EXPECT_GT(connections, 1);
  EXPECT_EQ(replies.Count(), number);
  EXPECT_FALSE(churn.FoundDamage());
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  EXPECT_TRUE(calls.WaitForLiveThreads(1));
}

TEST_F(LateIo, ManyWritesThatTimedOutHitNothing) {
  ConnectQuiet();
  MemoryChurn churn;
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::ReplyAndStall(kAck);
    return std::nullopt;
  });
  for (size_t round = 0; round < 20; ++round) {
    Freshen();
    SendManual(Marker(), 1);
    ASSERT_TRUE(replies.WaitFor(2 * round + 1));
    calls.Intercept(Function::kWaitForOne, On::kExchangeEvent,
                    [](const auto& call) { return WaitForSingleObjectHook::Real(call.handle, 4); });
    SendManual(kLongMessage, 2);
    ASSERT_TRUE(replies.WaitFor(2 * round + 2));
    EXPECT_TRUE(replies.All().back().value.empty());
    ExpectFreshConnection(++connections);
  }
  EXPECT_FALSE(churn.FoundDamage());
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
}

// The reply that was given up arrives at the very moment of its withdrawal.
TEST_F(LateIo, AReplyAtTheMomentOfItsWithdrawalHitsNothing) {
  ConnectQuiet();
  MemoryChurn churn;
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Hold(kAck);
    return std::nullopt;
  });
  for (int round = 0; round < 10; ++round) {
    Freshen();
    calls.Intercept(
        Function::kWaitForOne, On::kExchangeEvent,
        [this](const auto&) {
          service.WaitForHeld();
          return DWORD{WAIT_TIMEOUT};
        },
        1);
    calls.Intercept(Function::kCancelIo, On::kDuplexPipe, [this](const auto& call) {
      service.ReleaseHeld();
      std::this_thread::sleep_for(2ms);  // the reply may come before, during or after
      return call.real();
    });
    SendManual(Marker(), 1);
    ExpectFreshConnection(++connections);
    EXPECT_TRUE(calls.WaitUntilIntercepted());
  }
  EXPECT_EQ(replies.Count(), 10u);
  EXPECT_FALSE(churn.FoundDamage());
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
}

// What is cancelled is waited for, and only then is the pipe closed.
TEST_F(LateIo, ThePipeIsOpenUntilTheReadOfTheReplyHasEnded) {
  ConnectQuiet();
  const Gate gate;
  std::map<On, size_t> open;
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Nothing();
    return std::nullopt;
  });
  calls.Intercept(Function::kWaitForOne, On::kExchangeEvent,
                  PlatformCalls::Answer(WAIT_TIMEOUT, ERROR_IO_PENDING), 1);
  calls.Intercept(
      Function::kGetOverlappedResult, On::kDuplexPipe,
      [&, gate](const auto& call) {
        open = calls.OpenHandles();
        gate.Pass();
        return call.real();
      },
      1);
  Freshen();
  SendManual(Marker());
  ASSERT_TRUE(gate.WaitForArrival());
  auto expected = QuietHandles();
  expected[On::kExchangeEvent] = 1;
  expected.erase(On::kReadEvent);  // the announcements' read has ended already
  EXPECT_EQ(open, expected);
  EXPECT_EQ(calls.Calls(Function::kCancelIo, On::kDuplexPipe).size(), 1u);
  gate.Open();
  ExpectFreshConnection(2);
}

TEST_F(LateIo, TheReadThatIsPendingAtAShutdownHasEndedByItsReturn) {
  for (int round = 1; round <= 10; ++round) {
    Freshen();
    ConnectTo(service);
    ExpectFreshConnection(round);
    library.KorvuISD_Shutdown();
    ASSERT_TRUE(calls.WaitForLiveThreads(0));
    const size_t withdrawn = calls.Calls(Function::kCancelIo, On::kSendOnlyPipe).size();
    EXPECT_GE(withdrawn, static_cast<size_t>(round));
    service.WaitForDisconnect();
  }
}

TEST_F(LateIo, AShutdownDuringAnExchangeWaitsForItsEnd) {
  ConnectQuiet();
  MemoryChurn churn;
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Late(2100ms, kAck);
    return std::nullopt;
  });
  SendManual(Marker());
  service.WaitForRequests(ScriptedService::kBatchSize + 1);
  library.KorvuISD_Shutdown();
  ASSERT_TRUE(calls.WaitForLiveThreads(0));
  EXPECT_EQ(replies.Count(), 1u);
  service.WaitForDisconnect();
  EXPECT_FALSE(churn.FoundDamage());
}

}  // namespace
