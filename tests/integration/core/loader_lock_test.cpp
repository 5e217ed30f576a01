// The loader's lock and the library's. An application's DllMain runs under the loader's lock and
// may call an export, which takes the library's. So nothing may ask for the loader's lock while it
// holds the library's, or the two wait for each other.

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;

KORVU_HOOK(GetModuleHandleExW)
KORVU_HOOK(FreeLibrary)

namespace {

class LoaderLock : public IntegrationTest {
 protected:
  struct Findings {
    std::mutex mutex;
    std::condition_variable changed;
    int taken = 0;  // calls that take the loader's lock
    int stuck = 0;  // of those, the ones with the library's lock held
  };

  // Whether another thread gets the library's lock now; for that an export is called. One that does
  // not come back stays behind until the lock is free.
  static bool IsLibraryFree(const Library& library) {
    const Gate freed = OpenGate();
    std::thread calling([freed, call = library.KorvuISD_SetLogLevel] {
      call(KorvuISD_LogLevelOff);
      freed.Pass();
    });
    const bool isFree = freed.WaitForArrival();
    // Not one that may be ending: see tools/shared/start_thread.h.
    isFree ? calling.join() : calling.detach();
    return isFree;
  }

  void Watch() {
    const auto note = [findings = findings, this] {
      const bool isFree = IsLibraryFree(library);
      const std::lock_guard lock(findings->mutex);
      ++findings->taken;
      if (!isFree) ++findings->stuck;
      findings->changed.notify_all();
    };
    GetModuleHandleExWHook::Set(library, [note](auto... arguments) {
      note();
      return GetModuleHandleExWHook::Real(arguments...);
    });
    FreeLibraryHook::Set(library, [note](HMODULE module) {
      note();
      return FreeLibraryHook::Real(module);
    });
  }

  void ExpectNobodyStuck(int taken) {
    std::unique_lock lock(findings->mutex);
    EXPECT_TRUE(WaitUntil(lock, findings->changed, [&] { return findings->taken >= taken; }));
    EXPECT_EQ(findings->stuck, 0);
  }

  void TearDown() override {
    GetModuleHandleExWHook::Clear();
    FreeLibraryHook::Clear();
  }

  ScriptedService service;
  const std::shared_ptr<Findings> findings = std::make_shared<Findings>();
};

TEST_F(LoaderLock, IsNotTakenUnderTheLibrarysWhenItConnectsAndReconnects) {
  Watch();
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  ExpectNobodyStuck(1);
  service.BreakBoth();
  service.WaitForConnections(2);
  service.WaitForBatch();
  ExpectNobodyStuck(2);
}

TEST_F(LoaderLock, IsNotTakenUnderTheLibrarysWhenAConnectionFails) {
  Watch();
  CreateThreadHook::Set(library, [](auto...) -> HANDLE { return nullptr; });
  EXPECT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorFailed);
  CreateThreadHook::Clear();
  ExpectNobodyStuck(2);  // taken for a thread that never was, and given back
}

}  // namespace
