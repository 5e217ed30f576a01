// Shutdown races with nothing: threads go on calling while the client under them is replaced again
// and again. These tests look for crashes and deadlocks; they take about a minute, since each
// shutdown waits for its connection.

#include <atomic>
#include <thread>

#include "integration/integration_test.h"
#include "support/fault_rounds.h"

using namespace support;

namespace {

class ShutdownRace : public IntegrationTest {
 protected:
  // Connects and shuts down again and again while four threads run `call`.
  void Race(const std::function<void(int thread, int i)>& call) {
    library.KorvuISD_SetAPIVersion(9);
    std::atomic<bool> isOver = false;
    std::atomic<size_t> calls = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
      threads.emplace_back([&, thread] {
        for (int i = 0; !isOver; ++i) {
          call(thread, i);
          ++calls;
          // The queue of a client that is not connected yet only grows.
          if (i % 64 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
      });
    }
    int connected = 0;
    for (int round = 0; round < FaultRounds(100); ++round) {
      if (library.KorvuISD_Connect(20000) == KorvuISD_ErrorNone) ++connected;
      // A shutdown needs a connection, so one that failed ends the test here.
      if (connected != round + 1) break;
      library.KorvuISD_Shutdown();
    }
    isOver = true;
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(connected, FaultRounds(100));
    EXPECT_GT(calls, static_cast<size_t>(FaultRounds(100)));
  }

  // The library is as good as new.
  void ExpectGoodConnection() {
    recorder.Forget();
    service.Forget();
    service.SetValue(Key(115), L"77");
    Register(Context(1));
    const int before = service.ConnectionCount();
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    service.WaitForConnections(before + 1);
    service.WaitForBatch();
    EXPECT_EQ(recorder.CallsOf(8), std::vector<Call>({{8, Context(1), L"77"}}));
  }

  ScriptedService service;
};

TEST_F(ShutdownRace, SettersOfFourThreadsSurviveEveryShutdown) {
  Race([this](int thread, int i) {
    switch (thread) {
      case 0:
        return library.KorvuISD_SetTiltSensitivity(i, 0);
      case 1:
        return library.KorvuISD_SetTipSensitivity(i, 0);
      case 2:
        return library.KorvuISD_SetOpaqueModeDisplayPath(L"\\\\.\\DISPLAY1");
      default:
        return library.KorvuISD_SetPenAlert(i % 2, 0);
    }
  });
  ExpectGoodConnection();
}

// As fast as it goes, so that the calls meet each step of the shutdown more often, and with calls
// that do more than queue.
TEST_F(ShutdownRace, AllKindsOfCallsSurviveShutdownsInQuickSuccession) {
  SleepHook::Set(library, [](DWORD delayMs) { SleepHook::Real(delayMs == 100 ? 1 : delayMs); });
  const KorvuISD_Callbacks callbacks = CallbackRecorder::All();
  const auto ignore = [](void*, const wchar_t*, size_t*, size_t) {};
  Race([&](int thread, int i) {
    std::array<wchar_t, 64> buffer{};
    switch (thread) {
      case 0:
        if (i % 64 == 0) return library.KorvuISD_RegisterCallbacks(&callbacks, Context(1));
        return library.KorvuISD_SetAPIVersion(9);
      case 1:
        return library.SendManual(LR"({"manual":"1"})", Context(2), ignore);
      case 2:
        library.KorvuISD_StartKeyCapture();
        return library.KorvuISD_FinishKeyCapture(buffer.data(), buffer.size());
      default:
        return library.KorvuISD_SetTiltSensitivity(i, 0);
    }
  });
  SleepHook::Clear();
  ExpectGoodConnection();
}

}  // namespace
