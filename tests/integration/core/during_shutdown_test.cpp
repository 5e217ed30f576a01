// Calls that meet a shutdown, and shutdowns that meet each other.

#include <atomic>
#include <optional>
#include <thread>

#include "integration/core/platform_log.h"
#include "integration/core/shutdown_test.h"
#include "integration/core/sync_threads.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct HeldReply {
  static void KORVUISD_CALL Callback(void* context, const wchar_t*, size_t*, size_t) {
    static_cast<const Gate*>(context)->Pass();
  }
};

using MeetingAShutdown = ShutdownTest;

// The sync thread of the old client is kept busy, outside the lock, so that the shutdown lasts.
class DuringShutdown : public ShutdownTest {
 protected:
  void SetUp() override {
    ConnectTo(service);
    library.SendManual(LR"({"manual":"1"})", &gate, &HeldReply::Callback);
    ASSERT_TRUE(gate.WaitForArrival());
    log.emplace(library);
    shuttingDown = std::thread([this] {
      library.KorvuISD_Shutdown();
      hasReturned = true;
    });
    ASSERT_TRUE(log->WaitForLine("Sleep 100", 1));
    service.Forget();
  }

  void Finish() {
    EXPECT_FALSE(hasReturned);
    gate.Open();
    shuttingDown.join();
    log.reset();
  }

  Gate gate;
  std::optional<PlatformLog> log;
  std::thread shuttingDown;
  std::atomic<bool> hasReturned = false;
};

TEST_F(DuringShutdown, SettersSendNothing) {
  for (int i = 0; i < 10; ++i) {
    library.KorvuISD_SetTiltSensitivity(i, 0);
    library.KorvuISD_StartKeyCapture();
  }
  Finish();
  EXPECT_THAT(service.Requests(), IsEmpty());
  ConnectAgain();
  library.KorvuISD_SetTipSensitivity(1, 0);
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  EXPECT_THAT(TextsAfterTheBatch(), ElementsAre(ScriptedService::SetMessage(Key(116), L"1"),
                                                ScriptedService::ValueRequest(Key(116))));
}

TEST_F(DuringShutdown, CallsReachTheFreshClient) {
  service.SetValue(Key(kTilt), L"8");
  recorder.Forget();
  Register(Context(7));
  ConnectAgain();
  EXPECT_EQ(service.ConnectionCount(), 2);
  EXPECT_THAT(recorder.CallsOf(kTiltSlot), ElementsAre(Call{kTiltSlot, Context(7), L"8"}));
  Finish();

  // The end of the old connection leaves the new one alone.
  service.Forget();
  library.KorvuISD_SetTipSensitivity(1, 0);
  service.WaitForRequests(2);
  EXPECT_EQ(service.ConnectionCount(), 2);
}

TEST_F(MeetingAShutdown, AConnectThatTheShutdownOvertakesOpensNothingAndReportsNoError) {
  // It has the old client, and waits for the pipe until the old client is gone.
  const Gate gate;
  const DWORD overtaken = GetCurrentThreadId();
  KorvuISD_Error result = KorvuISD_ErrorFailed;
  std::thread others;
  WaitNamedPipeWHook::Set(library, [=](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    if (GetCurrentThreadId() == overtaken) gate.Pass();
    return WaitNamedPipeWHook::Real(name, timeoutMs);
  });
  others = std::thread([&] {
    const bool arrived = gate.WaitForArrival();
    if (arrived) {
      library.KorvuISD_Connect(20000);
      service.WaitForConnections(1);
      library.KorvuISD_Shutdown();
    }
    service.Forget();
    gate.Open();
  });
  result = library.KorvuISD_Connect(30000);
  others.join();
  WaitNamedPipeWHook::Clear();
  EXPECT_EQ(result, KorvuISD_ErrorNone);

  // There was no connection: this one is the second.
  ConnectAgain();
  EXPECT_EQ(service.ConnectionCount(), 2);
}

// The old connection is lost, and its thread about to close what there is, when a connection comes
// up that was waiting for its pipe since before the shutdown.
TEST_F(MeetingAShutdown, AThreadThatClosesTooLateLeavesTheNewConnectionToItsOwnThread) {
  PlatformLog log(library);
  SyncThreads threads(library);
  const Gate pausing;
  const Gate connecting;
  const Gate closingOld;
  const Gate closingNew;
  const auto closings = std::make_shared<std::atomic<int>>(0);
  OutputDebugStringWHook::Set(library, [=](const wchar_t* text) {
    if (std::wstring_view(text) != L"Shutting down...\r\n") return;
    (++*closings == 1 ? closingOld : closingNew).Pass();
  });
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  ConnectTo(service);  // pipe1, pipe2

  // The reconnection fails half-way, so that there is no connection for a while.
  WaitForSingleObjectHook::Set(library, [=](HANDLE handle, DWORD timeoutMs) -> DWORD {
    if (timeoutMs == 100) pausing.Pass();
    return WaitForSingleObjectHook::Real(handle, timeoutMs);
  });
  log.Fail("CreateFileW", 2);
  service.BreakBoth();  // pipe3 for a moment
  ASSERT_TRUE(pausing.WaitForArrival());
  WaitNamedPipeWHook::Set(library, [=](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    connecting.Pass();
    return WaitNamedPipeWHook::Real(name, timeoutMs);
  });
  KorvuISD_Error result = KorvuISD_ErrorFailed;
  std::thread application([&] { result = library.KorvuISD_Connect(30000); });
  EXPECT_TRUE(connecting.WaitForArrival());
  std::thread shuttingDown([&] { library.KorvuISD_Shutdown(); });
  EXPECT_TRUE(log.WaitForLine("Sleep 100"));
  pausing.Open();
  EXPECT_TRUE(closingOld.WaitForArrival());
  connecting.Open();
  application.join();  // pipe4, pipe5
  EXPECT_EQ(result, KorvuISD_ErrorNone);

  closingOld.Open();
  EXPECT_TRUE(threads.WaitForEnd(0));
  const auto isOfNewConnection = testing::AnyOf("CloseHandle pipe4", "CloseHandle pipe5");
  EXPECT_THAT(log.LinesOf("CloseHandle"), testing::Each(testing::Not(isOfNewConnection)));
  closingNew.Open();
  shuttingDown.join();
  EXPECT_TRUE(log.WaitForLine("CloseHandle pipe4"));
  EXPECT_TRUE(log.WaitForLine("CloseHandle pipe5"));
  EXPECT_TRUE(threads.WaitForEnd(1));
  OutputDebugStringWHook::Clear();
  WaitForSingleObjectHook::Clear();
  WaitNamedPipeWHook::Clear();
}

TEST_F(MeetingAShutdown, TwoThreadsThatShutDownAtOnceBothReturn) {
  ConnectTo(service);
  // Both have read the client before either replaces it.
  struct Meeting {
    std::mutex mutex;
    std::condition_variable changed;
    int arrived = 0;
  };
  const auto meeting = std::make_shared<Meeting>();
  CreateEventWHook::Set(library, [meeting](auto security, BOOL manual, BOOL set, LPCWSTR name) {
    {
      std::unique_lock lock(meeting->mutex);
      ++meeting->arrived;
      meeting->changed.notify_all();
      WaitUntil(lock, meeting->changed, [&] { return meeting->arrived >= 2; });
    }
    return CreateEventWHook::Real(security, manual, set, name);
  });
  std::thread first([&] { library.KorvuISD_Shutdown(); });
  std::thread second([&] { library.KorvuISD_Shutdown(); });
  first.join();
  second.join();
  CreateEventWHook::Clear();
  ConnectAgain();
  EXPECT_EQ(service.ConnectionCount(), 2);
}

}  // namespace
