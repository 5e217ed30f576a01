// Loading and unloading: the DLL stays while its thread runs in it, then goes, and leaves nothing
// behind.

#include <memory>
#include <thread>

#include <windows.h>

#include "integration/integration_test.h"
#include "support/fault_rounds.h"
#include "support/function_patch.h"
#include "support/gate.h"
#include "support/process_usage.h"
#include "support/session.h"

using namespace support;

namespace {

constexpr const wchar_t* kName = L"KorvuTabletSettingsAPI.dll";

bool IsLoaded() {
  return GetModuleHandleW(kName) != nullptr;
}

// There is nothing to wait for: the thread's last act is to let the DLL go.
template <class Condition>
bool Becomes(Condition condition) {
  const auto start = Clock::now();
  while (!condition()) {
    if (Clock::now() - start > kPatience) return false;
    Sleep(1);
  }
  return true;
}

bool IsUnloadedInTheEnd() {
  return Becomes([] { return !IsLoaded(); });
}

// The next free slot of thread-local storage: higher, if some were not given back.
DWORD NextTlsSlot() {
  const DWORD slot = TlsAlloc();
  TlsFree(slot);
  return slot;
}

class Load : public testing::Test {
 protected:
  // Before the service is made, which the library is to find.
  void SetUp() override { UseSession(GetCurrentProcessId()); }

  static std::wstring Key(int index) { return expected::SettingKeys().at(index); }

  static void Connect(Library& library, ScriptedService& service) {
    library.KorvuISD_SetAPIVersion(9);
    const KorvuISD_Callbacks callbacks = CallbackRecorder::All();
    library.KorvuISD_RegisterCallbacks(&callbacks, Context(1));
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    service.WaitForBatch();
  }

  CallbackRecorder& recorder = CallbackRecorder::Instance();
};

HMODULE g_moduleWithoutThreadCalls = nullptr;

BOOL WINAPI NoteModule(HMODULE module) {
  g_moduleWithoutThreadCalls = module;
  return TRUE;
}

TEST_F(Load, AsksNotToBeToldOfThreads) {
  ReplaceSystemFunction("DisableThreadLibraryCalls", reinterpret_cast<const void*>(&NoteModule));
  const Library library;
  EXPECT_EQ(g_moduleWithoutThreadCalls, library.Module());
}

TEST_F(Load, WithoutAConnectionUnloadingIsAtOnce) {
  Library library;
  library.Unload();
  EXPECT_FALSE(IsLoaded());
}

TEST_F(Load, AfterShutdownTheDllGoesWhenItsThreadHasEnded) {
  ScriptedService service;
  Library library;
  Connect(library, service);
  library.KorvuISD_Shutdown();
  library.Unload();
  EXPECT_TRUE(IsUnloadedInTheEnd());
}

TEST_F(Load, UnloadingInsteadOfShutdownKeepsTheDllAndItsConnection) {
  ScriptedService service;
  {
    Library library;
    Connect(library, service);
    library.Unload();
  }
  // Callbacks still come.
  for (int value = 1; value <= 20; ++value) service.Announce(Key(kTilt), std::to_wstring(value));
  EXPECT_TRUE(recorder.WaitForSlot(kTiltSlot, 20));
  EXPECT_TRUE(IsLoaded());

  // The connection is still there for who loads the DLL again, and can end it.
  Library again;
  EXPECT_EQ(again.KorvuISD_Connect(0), KorvuISD_ErrorNone);
  EXPECT_EQ(service.ConnectionCount(), 1);
  again.KorvuISD_Shutdown();
  again.Unload();
  EXPECT_TRUE(IsUnloadedInTheEnd());
  service.WaitForDisconnect();
}

TEST_F(Load, ALostConnectionKeepsTheDllToo) {
  ScriptedService service;
  {
    Library library;
    Connect(library, service);
    library.Unload();
  }
  service.BreakBoth();
  service.WaitForConnections(2);
  service.WaitForBatch();
  EXPECT_TRUE(IsLoaded());
  Library again;
  again.KorvuISD_Shutdown();
  again.Unload();
  EXPECT_TRUE(IsUnloadedInTheEnd());
}

TEST_F(Load, AShutdownDuringACallbackLetsItFinish) {
  ScriptedService service;
  Library library;
  Connect(library, service);
  const Gate gate;
  recorder.WhenCalled([gate](const Call&) { gate.Pass(); });
  service.Announce(Key(kTilt), L"5");
  ASSERT_TRUE(gate.WaitForArrival());
  std::thread shuttingDown([&] { library.KorvuISD_Shutdown(); });
  gate.Open();
  shuttingDown.join();
  library.Unload();
  EXPECT_TRUE(IsUnloadedInTheEnd());
  recorder.WhenCalled({});
}

TEST_F(Load, AThreadThatCouldNotBeStartedDoesNotKeepTheDll) {
  ScriptedService service;
  Library library;
  CreateThreadHook::Set(library, [](auto...) -> HANDLE { return nullptr; });
  EXPECT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorFailed);
  CreateThreadHook::Clear();
  library.Unload();
  EXPECT_TRUE(IsUnloadedInTheEnd());
  service.WaitForDisconnect();
}

void LoadConnectShutdownUnload(int times) {
  // With its own service, so that the service's threads are gone when this returns.
  ScriptedService service;
  for (int i = 0; i < times; ++i) {
    Library library;
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    library.KorvuISD_SetTiltSensitivity(i, 0);
    library.KorvuISD_Shutdown();
    library.Unload();
    ASSERT_TRUE(IsUnloadedInTheEnd());
  }
}

TEST_F(Load, AgainAndAgainLeavesNoHandleThreadOrSlotBehind) {
  // What the first use of the system's libraries makes for good is not ours.
  LoadConnectShutdownUnload(5);
  const int64_t threads = RunningThreads();
  const int64_t handles = OpenHandles();
  const DWORD slot = NextTlsSlot();
  LoadConnectShutdownUnload(FaultRounds(100));
  EXPECT_TRUE(Becomes([&] { return RunningThreads() <= threads; })) << RunningThreads();
  EXPECT_TRUE(Becomes([&] { return OpenHandles() <= handles + kHandlesOfTestLocks; }))
      << OpenHandles() << " handles after " << handles;
  EXPECT_EQ(NextTlsSlot(), slot);
}

TEST_F(Load, ConnectingAndShuttingDownLeavesNoHandleOrThreadBehind) {
  Library library;
  const auto connectAndShutDown = [&](int times) {
    ScriptedService service;
    for (int i = 0; i < times; ++i) {
      ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
      library.KorvuISD_Shutdown();
    }
    service.WaitForDisconnect();
  };
  connectAndShutDown(5);
  const int64_t threads = RunningThreads();
  const int64_t handles = OpenHandles();
  connectAndShutDown(FaultRounds(50));
  EXPECT_TRUE(Becomes([&] { return RunningThreads() <= threads; })) << RunningThreads();
  EXPECT_TRUE(Becomes([&] { return OpenHandles() <= handles + kHandlesOfTestLocks; }))
      << OpenHandles() << " handles after " << handles;
}

}  // namespace
