// What the sync thread does when the service is gone: it tries again until the service is back or
// the application shuts down.

#include <atomic>
#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

const std::wstring kConnecting = Line(L"Connecting...");
const std::wstring kTimedOut = Line(L"Timed out waiting for Service send only pipe: 2.");

class Reconnection : public TransportTest {
 protected:
  // The processor clock and the sleeps of the library, without the waiting. Shared: the library's
  // thread may be inside a hook when the test is over.
  struct Time {
    std::atomic<std::clock_t> now{0};
    std::mutex mutex;
    std::vector<DWORD> pipeWaits;
  };

  // Until TearDown, waits for a pipe that is not there take no time, and count as if they did.
  void SpeedUpTime() {
    clockHook::Set(library, [time = time] { return time->now.load(); });
    SleepHook::Set(library, [time = time](DWORD ms) {
      time->now += static_cast<std::clock_t>(ms) * CLOCKS_PER_SEC / 1000;
      std::this_thread::yield();
    });
    WaitNamedPipeWHook::Set(library, [time = time](LPCWSTR name, DWORD ms) -> BOOL {
      {
        const std::lock_guard lock(time->mutex);
        time->pipeWaits.push_back(ms);
      }
      return WaitNamedPipeWHook::Real(name, ms);
    });
  }
  void TearDown() override {
    clockHook::Clear();
    SleepHook::Clear();
    WaitNamedPipeWHook::Clear();
    SetNamedPipeHandleStateHook::Clear();
  }

  size_t CountLines(const std::wstring& line) const {
    return static_cast<size_t>(std::ranges::count(trace.Lines(), line));
  }
  [[nodiscard]] bool WaitForLines(const std::wstring& line, size_t count) {
    return trace.WaitForLines([&](const std::vector<std::wstring>& lines) {
      return static_cast<size_t>(std::ranges::count(lines, line)) >= count;
    });
  }

  std::shared_ptr<Time> time = std::make_shared<Time>();
  PlatformCalls calls{library};
  TraceRecorder trace{library};
};

TEST_F(Reconnection, IsTriedForThirtySecondsAtATimeUntilTheServiceReturns) {
  ConnectTo(service);
  Settle();
  SpeedUpTime();
  TraceOn();
  trace.Forget();
  service.Vanish();
  ASSERT_TRUE(WaitForLines(kTimedOut, 3));
  Freshen();
  service.Return();
  ExpectFreshConnection(2);
  EXPECT_EQ(CountLines(kConnecting), CountLines(kTimedOut) + 1);

  // Each attempt begins with the whole 30 seconds, goes down by a second's sleep at a time, and
  // looks once more at the end.
  const std::lock_guard lock(time->mutex);
  ASSERT_GE(time->pipeWaits.size(), 60u);
  for (size_t i = 0; i < 60; ++i) EXPECT_EQ(time->pipeWaits[i], 30000 - 1000 * (i % 31));
}

TEST_F(Reconnection, EndsTheOldThreadAndLeavesOneConnection) {
  ConnectTo(service);
  for (int connection = 2; connection <= 5; ++connection) {
    Freshen();
    service.BreakBoth();
    ExpectFreshConnection(connection);
    EXPECT_TRUE(calls.WaitForLiveThreads(1));
    EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  }
  EXPECT_EQ(calls.ThreadResults(), std::vector<DWORD>(4, 0));
}

// The requests are answered when the loss is handled, long before the service is back.
TEST_F(Reconnection, ComesAfterThePendingRequestsHaveBeenAnswered) {
  ConnectTo(service);
  Settle();
  ASSERT_TRUE(calls.WaitForStartedRead());
  calls.Intercept(Function::kGetOverlappedResult, On::kSendOnlyPipe, [this](const auto& call) {
    const DWORD result = call.real();
    const DWORD error = GetLastError();
    for (int i = 3; i >= 1; --i) SendManual(Marker(i), 10);
    for (uintptr_t context = 22; context >= 20; --context) SendManual(Marker(2), context);
    SetLastError(error);
    return result;
  });
  service.Vanish();
  ASSERT_TRUE(replies.WaitFor(6));
  // In the order of the messages, and within one in that of the contexts.
  std::vector<void*> contexts;
  for (const ManualReply& reply : replies.All()) {
    EXPECT_EQ(reply, (ManualReply{reply.context, L"", L""}));
    contexts.push_back(reply.context);
  }
  EXPECT_EQ(contexts, (std::vector<void*>{Context(10), Context(10), Context(20), Context(21),
                                          Context(22), Context(10)}));
  EXPECT_EQ(service.ConnectionCount(), 1);
  Freshen();
  service.Return();
  ExpectFreshConnection(2);
  EXPECT_EQ(replies.Count(), 6u);
}

TEST_F(Reconnection, IsNotTriedWhenTheShutdownHasBegun) {
  ConnectTo(service);
  Settle();
  TraceOn();
  trace.Forget();
  // The answer to a pending request holds the thread up while it handles the loss.
  const Gate gate;
  replies.WhenCalled([gate](const ManualReply&) { gate.Pass(); });
  calls.Intercept(Function::kResetEvent, On::kReadEvent, [this](const auto&) {
    SendManual(Marker());
    SetLastError(ERROR_INVALID_HANDLE);
    return DWORD{FALSE};
  });
  service.Announce(Key(kTilt), L"1");
  ASSERT_TRUE(gate.WaitForArrival());
  std::thread shutdown([this] { library.KorvuISD_Shutdown(); });
  EXPECT_TRUE(calls.WaitForCall(Function::kSetEvent, On::kShutdownEvent));
  gate.Open();
  shutdown.join();
  ASSERT_TRUE(calls.WaitForLiveThreads(0));
  EXPECT_EQ(CountLines(kConnecting), 0u);
  EXPECT_EQ(trace.Lines().back(), Line(L"Shutting down..."));
  EXPECT_EQ(service.ConnectionCount(), 1);
  EXPECT_EQ(calls.ThreadResults(), std::vector<DWORD>{0});
  service.WaitForDisconnect();
}

TEST_F(Reconnection, EndsWithAShutdownWhenTheAttemptReturns) {
  ConnectTo(service);
  Settle();
  TraceOn();
  trace.Forget();
  const Gate gate;
  WaitNamedPipeWHook::Set(library, [gate](LPCWSTR, DWORD) -> BOOL {
    gate.Pass();
    SetLastError(ERROR_FILE_NOT_FOUND);
    return FALSE;
  });
  // The attempt's time is over as soon as it looks at the clock again.
  clockHook::Set(library, [time = time] { return time->now.fetch_add(31 * CLOCKS_PER_SEC); });
  service.Vanish();
  ASSERT_TRUE(gate.WaitForArrival());
  std::atomic<bool> hasReturned{false};
  std::thread shutdown([&] {
    library.KorvuISD_Shutdown();
    hasReturned = true;
  });
  // It polls; twice is enough to see that it does not give up.
  EXPECT_TRUE(calls.WaitForCall(Function::kSetEvent, On::kShutdownEvent, 2));
  EXPECT_FALSE(hasReturned);
  gate.Open();
  shutdown.join();
  ASSERT_TRUE(calls.WaitForLiveThreads(0));
  EXPECT_EQ(CountLines(kConnecting), 1u);
  EXPECT_EQ(trace.Lines().back(), Line(L"Shutting down..."));
}

// A pause is for a service that is there and does not let us in. One that comes back is found at
// once.
TEST_F(Reconnection, MakesNoPausesWhileTheServiceIsAway) {
  ConnectTo(service);
  Settle();
  SetNamedPipeHandleStateHook::Set(library, [](auto...) -> BOOL {
    SetLastError(ERROR_PIPE_NOT_CONNECTED);
    return FALSE;
  });
  const Gate gate;
  calls.Intercept(Function::kWaitForOne, On::kOther, PlatformCalls::Answer(WAIT_TIMEOUT, 0));
  calls.Intercept(Function::kWaitForOne, On::kOther, [gate](const auto&) {
    gate.Pass();
    return DWORD{WAIT_TIMEOUT};
  });
  SpeedUpTime();
  TraceOn();
  service.BreakBoth();
  ASSERT_TRUE(gate.WaitForArrival());
  service.Vanish();
  gate.Open();
  ASSERT_TRUE(WaitForLines(kTimedOut, 3));
  std::vector<DWORD> pauses;
  for (const PlatformCall& wait : calls.Calls(Function::kWaitForOne, On::kOther)) {
    pauses.push_back(wait.amount);
  }
  EXPECT_EQ(pauses, (std::vector<DWORD>{100, 200}));
}

TEST_F(Reconnection, IsNotEndedByAFailingAttempt) {
  ConnectTo(service);
  Settle();
  Freshen();
  // A pipe that is there and cannot be opened, three times.
  auto failures = std::make_shared<std::atomic<int>>(3);
  SetNamedPipeHandleStateHook::Set(
      library, [failures](HANDLE pipe, LPDWORD mode, LPDWORD collect, LPDWORD timeout) -> BOOL {
        if ((*failures)-- > 0) {
          SetLastError(ERROR_PIPE_NOT_CONNECTED);
          return FALSE;
        }
        return SetNamedPipeHandleStateHook::Real(pipe, mode, collect, timeout);
      });
  TraceOn();
  service.BreakBoth();
  ASSERT_TRUE(WaitForLines(Line(L"Failed to transition to read mode."), 3));
  service.WaitForConnections(2);
  const std::wstring fresh = std::to_wstring(3000000);
  service.SetValue(Key(kTilt), fresh);
  library.KorvuISD_SetTiltSensitivity(1, 0);
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  EXPECT_TRUE(calls.WaitForLiveThreads(1));
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  SetNamedPipeHandleStateHook::Clear();
}

}  // namespace
