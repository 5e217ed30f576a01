// The log level while another thread shuts down: a change that meets the shutdown is not lost, and
// level and trace agree afterwards.

#include <atomic>
#include <thread>

#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class LevelDuringShutdown : public IntegrationTest {
 protected:
  void SetUp() override {
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    service.WaitForBatch();
  }

  // Whether the library believes that tracing is on, and traces: one line of each.
  void ExpectTracing() {
    trace.Forget();
    library.KorvuISD_SetAPIVersion(1);
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);  // not opened again
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
    EXPECT_THAT(trace.Lines(),
                ElementsAre(L"Using API Version: 1.\r\n", StartsWith(L"Closing Logging to ")));
  }

  void ExpectNoTracing() {
    trace.Forget();
    library.KorvuISD_SetAPIVersion(1);
    EXPECT_THAT(trace.Lines(), IsEmpty());
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
    EXPECT_THAT(trace.Lines(), ElementsAre(StartsWith(L"Sending trace to file ")));
  }

  // Shuts down, and sets the level from another thread while the next client is being made.
  void SetMeanwhile(KorvuISD_LogLevel level) {
    const DWORD shuttingDown = GetCurrentThreadId();
    const auto isSet = std::make_shared<std::atomic<bool>>(false);
    CreateEventWHook::Set(library, [=, this](auto... arguments) {
      if (GetCurrentThreadId() == shuttingDown && !isSet->exchange(true)) {
        std::thread([&] { library.KorvuISD_SetLogLevel(level); }).join();
      }
      return CreateEventWHook::Real(arguments...);
    });
    library.KorvuISD_Shutdown();
    CreateEventWHook::Clear();
    EXPECT_TRUE(*isSet);
  }

  ScriptedService service;
  TraceRecorder trace{library};
};

TEST_F(LevelDuringShutdown, SwitchedOnStaysOn) {
  SetMeanwhile(KorvuISD_LogLevelInfo);
  ExpectTracing();
}

TEST_F(LevelDuringShutdown, SwitchedOffStaysOff) {
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelInfo);
  SetMeanwhile(KorvuISD_LogLevelOff);
  ExpectNoTracing();
}

const Gate* g_gateOfRegistration = nullptr;

void KORVUISD_CALL StopInRegistration(void*, uint64_t) {
  g_gateOfRegistration->Pass();
}

// The client that the change was meant for is closed before its turn comes.
TEST_F(LevelDuringShutdown, AChangeThatWaitsForTheLockMeanwhileIsMade) {
  const Gate gate;
  g_gateOfRegistration = &gate;
  std::thread registering([&] {
    KorvuISD_Callbacks callbacks{};
    callbacks.OnWedgeCapacity = &StopInRegistration;
    library.KorvuISD_RegisterCallbacks(&callbacks, nullptr);
  });
  EXPECT_TRUE(gate.WaitForArrival());
  std::thread setting([&] { library.KorvuISD_SetLogLevel(KorvuISD_LogLevelInfo); });
  // By then it waits for the lock with the old client in its hands. Should it be later, it finds
  // the fresh one, and there is nothing to see.
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  std::thread shuttingDown([&] { library.KorvuISD_Shutdown(); });
  // The sync thread has seen the signal, and the client takes no more work.
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  gate.Open();
  registering.join();
  setting.join();
  shuttingDown.join();
  ExpectTracing();
}

}  // namespace
