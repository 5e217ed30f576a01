// How a connection is closed, and how KorvuISD_Shutdown waits for that: by which calls, and in
// which order.

#include <atomic>
#include <thread>

#include "integration/core/platform_log.h"
#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;
using testing::StartsWith;

namespace {

// In the order in which a connection first shows them; the events were made with the client.
const std::string kSendOnly = "pipe1";
const std::string kDuplex = "pipe2";
const std::string kReadEvent = "event1";
const std::string kSendEvent = "handle1";
const std::string kShutdownEvent = "handle2";

class ShutdownCalls : public IntegrationTest {
 protected:
  // All handles get their names on the way, but for the shutdown event.
  void ConnectUnder(PlatformLog&) {
    const int before = service.ConnectionCount();
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    service.WaitForConnections(before + 1);
    service.WaitForBatch();
  }

  ScriptedService service;
};

std::vector<std::string> Last(const std::vector<std::string>& lines, size_t count) {
  const auto from = lines.size() < count ? 0 : lines.size() - count;
  return {lines.begin() + static_cast<std::ptrdiff_t>(from), lines.end()};
}

TEST_F(ShutdownCalls, TheConnectionIsClosedPipesFirstAndTheEventsAfterThem) {
  PlatformLog log(library);
  ConnectUnder(log);
  library.KorvuISD_Shutdown();
  ASSERT_TRUE(log.WaitForLine("CloseHandle " + kSendEvent));
  EXPECT_THAT(
      Last(log.LinesOfOthers(), 5),
      ElementsAre("CloseHandle " + kReadEvent, "CloseHandle " + kSendOnly, "CloseHandle " + kDuplex,
                  "CloseHandle " + kShutdownEvent, "CloseHandle " + kSendEvent));
}

// A service counts a client by its send-only pipe, so that is the first to go.
TEST_F(ShutdownCalls, ALostConnectionIsClosedSendOnlyPipeFirstToo) {
  PlatformLog log(library);
  ConnectUnder(log);
  log.Forget();
  service.BreakBoth();
  service.WaitForConnections(2);
  service.WaitForBatch();
  std::vector<std::string> closed;
  for (const std::string& line : log.LinesOf("CloseHandle")) {
    if (line.ends_with(kSendOnly) || line.ends_with(kDuplex)) closed.push_back(line);
  }
  EXPECT_THAT(closed, ElementsAre("CloseHandle " + kSendOnly, "CloseHandle " + kDuplex));
}

TEST_F(ShutdownCalls, TheThreadThatShutsDownSignalsEveryHundredMilliseconds) {
  PlatformLog log(library);
  ConnectUnder(log);
  log.Forget();
  library.KorvuISD_Shutdown();
  const auto lines = log.Lines();
  ASSERT_GE(lines.size(), 5u);
  // The fresh client's two events come before the old client is stopped.
  EXPECT_THAT(lines[0], StartsWith("CreateEventW null manual unset null: event"));
  EXPECT_THAT(lines[1], StartsWith("CreateEventW null manual unset null: event"));
  for (size_t i = 2; i + 1 < lines.size(); i += 2) {
    EXPECT_EQ(lines[i], "SetEvent " + kShutdownEvent);
    EXPECT_EQ(lines[i + 1], "Sleep 100");
  }
  EXPECT_EQ(lines.size() % 2, 1u);
  EXPECT_EQ(lines.back(), "SetEvent invalid");
}

TEST_F(ShutdownCalls, AFreshClientMakesItsShutdownEventFirst) {
  PlatformLog log(library);
  ConnectUnder(log);
  log.Forget();
  library.KorvuISD_Shutdown();
  const auto made = log.Lines();
  const auto nameIn = [](const std::string& line) { return line.substr(line.rfind(' ') + 1); };
  const std::string shutdownEvent = nameIn(made.at(0));
  const std::string sendEvent = nameIn(made.at(1));
  service.Forget();
  ConnectUnder(log);
  EXPECT_THAT(log.Lines(), testing::Contains("ResetEvent " + sendEvent));
  library.KorvuISD_Shutdown();
  EXPECT_THAT(log.Lines(), testing::Contains("SetEvent " + shutdownEvent));
}

TEST_F(ShutdownCalls, TheTraceSaysThatTheConnectionIsBeingClosed) {
  TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  library.KorvuISD_Shutdown();
  const auto lines = trace.Lines();
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[lines.size() - 2], L"SyncThread: shutdown event.\r\n");
  EXPECT_EQ(lines.back(), L"Shutting down...\r\n");
}

// There is no sync thread that could close the connection.
TEST_F(ShutdownCalls, OnAClientThatNeverConnectedShutdownDoesNotReturn) {
  PlatformLog log(library);
  std::atomic<bool> hasReturned = false;
  const auto start = Clock::now();
  std::thread shuttingDown([&] {
    library.KorvuISD_Shutdown();
    hasReturned = true;
  });
  const std::string signal = "SetEvent handle1";
  const bool keptSignalling = log.WaitForLine(signal, 10);
  EXPECT_TRUE(keptSignalling);
  EXPECT_FALSE(hasReturned);
  EXPECT_GE(MsSince(start).count(), 700);

  // Nothing but a refused signal ends it.
  log.Fail("SetEvent", 1);
  shuttingDown.join();
  const auto lines = log.LinesOfOthers();
  EXPECT_THAT(lines[0], StartsWith("CreateEventW null manual unset null"));
  EXPECT_THAT(lines[1], StartsWith("CreateEventW null manual unset null"));
  size_t i = 2;
  for (; lines.at(i) != signal + ": failed"; i += 2) {
    ASSERT_EQ(lines[i], signal);
    ASSERT_EQ(lines.at(i + 1), "Sleep 100");
  }
  EXPECT_GE(i, 2u + 2 * 10);
}

TEST_F(ShutdownCalls, ShutdownOfAClientWithoutThreadDoesNotReturnEither) {
  PlatformLog log(library);
  log.Fail("CreateThread", 1);
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorFailed);
  std::atomic<bool> hasReturned = false;
  std::thread shuttingDown([&] {
    library.KorvuISD_Shutdown();
    hasReturned = true;
  });
  EXPECT_TRUE(log.WaitForLine("SetEvent " + kShutdownEvent, 5));
  EXPECT_FALSE(hasReturned);
  log.Fail("SetEvent", 1);
  shuttingDown.join();
}

Gate* g_gateOfWork = nullptr;

void KORVUISD_CALL StopInWork(void*, uint64_t) {
  g_gateOfWork->Pass();
}

// The connection has been closed by then, so nobody else waits for that thread.
TEST_F(ShutdownCalls, ShutdownWaitsForARegistrationThatBeginsWhenTheConnectionIsClosed) {
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  // The thread that shuts down waits a hundred milliseconds between its looks; here, for the test.
  const Gate gateOfWait;
  SleepHook::Set(library, [gateOfWait](DWORD timeMs) {
    if (timeMs == 100) gateOfWait.Pass();
  });
  std::atomic<bool> hasReturned = false;
  std::thread shuttingDown([&] {
    library.KorvuISD_Shutdown();
    hasReturned = true;
  });
  EXPECT_TRUE(gateOfWait.WaitForArrival());
  service.WaitForDisconnect();

  Gate gate;
  g_gateOfWork = &gate;
  std::thread working([&] {
    KorvuISD_Callbacks callbacks{};
    callbacks.OnWedgeCapacity = &StopInWork;
    library.KorvuISD_RegisterCallbacks(&callbacks, nullptr);
  });
  EXPECT_TRUE(gate.WaitForArrival());
  gateOfWait.Open();
  // Time enough for a wrong library to return; a right one waits anyway.
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_FALSE(hasReturned);
  gate.Open();
  working.join();
  shuttingDown.join();
  SleepHook::Clear();
}

// The work may use the client that is about to go.
TEST_F(ShutdownCalls, ShutdownWaitsForWorkThatRunsInTheClient) {
  PlatformLog log(library);
  ConnectUnder(log);
  Gate gate;
  g_gateOfWork = &gate;
  std::thread working([&] {
    KorvuISD_Callbacks callbacks{};
    callbacks.OnWedgeCapacity = &StopInWork;  // called within the registration
    library.KorvuISD_RegisterCallbacks(&callbacks, nullptr);
  });
  EXPECT_TRUE(gate.WaitForArrival());
  std::atomic<bool> hasReturned = false;
  std::thread shuttingDown([&] {
    library.KorvuISD_Shutdown();
    hasReturned = true;
  });
  EXPECT_TRUE(log.WaitForLine("SetEvent " + kShutdownEvent, 5));
  EXPECT_FALSE(hasReturned);
  gate.Open();
  working.join();
  shuttingDown.join();
}

}  // namespace
