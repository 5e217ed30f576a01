// Threads, the last error that each has of its own, and the modules that their code lives in.

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

struct Work {
  Handle goOn{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  Handle done{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  HMODULE module = nullptr;
  DWORD id = 0;
  DWORD errorAtStart = kUntouched;
  std::atomic<bool> wentOn{false};
  std::atomic<bool> hasCleanedUp{false};
};

DWORD WINAPI WaitAndFinish(void* parameter) {
  auto* const work = static_cast<Work*>(parameter);
  work->id = GetCurrentThreadId();
  WaitForSingleObject(work->goOn.Get(), INFINITE);
  SetEvent(work->done.Get());
  return 0;
}

TEST(Threads, RunWithTheirParameterAndTellTheirNumber) {
  Work work;
  SetEvent(work.goOn.Get());
  DWORD id = 0;
  const Handle thread(CreateThread(nullptr, 0, WaitAndFinish, &work, 0, &id));
  ASSERT_TRUE(thread.IsOpen());
  ASSERT_EQ(WaitForSingleObject(thread.Get(), kPatienceMs), WAIT_OBJECT_0);
  EXPECT_EQ(work.id, id);
  EXPECT_NE(id, GetCurrentThreadId());
}

TEST(Threads, AreSignalledWhenTheyEndAndNotBefore) {
  Work work;
  const Handle thread(CreateThread(nullptr, 0, WaitAndFinish, &work, 0, nullptr));
  EXPECT_EQ(WaitForSingleObject(thread.Get(), 20), DWORD{WAIT_TIMEOUT});
  SetEvent(work.goOn.Get());
  EXPECT_EQ(WaitForSingleObject(thread.Get(), kPatienceMs), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(work.done.Get(), 0), WAIT_OBJECT_0);
}

TEST(Threads, GoOnWhenTheirHandleIsClosed) {
  Work work;
  Handle thread(CreateThread(nullptr, 0, WaitAndFinish, &work, 0, nullptr));
  thread.Close();
  SetEvent(work.goOn.Get());
  EXPECT_EQ(WaitForSingleObject(work.done.Get(), kPatienceMs), WAIT_OBJECT_0);
}

DWORD WINAPI LeaveAnError(void* parameter) {
  auto* const work = static_cast<Work*>(parameter);
  WaitForSingleObject(work->goOn.Get(), INFINITE);
  work->errorAtStart = GetLastError();
  SetLastError(ERROR_INVALID_HANDLE);
  return 0;
}

TEST(Threads, HaveALastErrorOfTheirOwn) {
  Work work;
  const Handle thread(CreateThread(nullptr, 0, LeaveAnError, &work, 0, nullptr));
  SetLastError(kUntouched);
  SetEvent(work.goOn.Get());
  ASSERT_EQ(WaitForSingleObject(thread.Get(), kPatienceMs), WAIT_OBJECT_0);
  EXPECT_EQ(GetLastError(), kUntouched);
  EXPECT_EQ(work.errorAtStart, DWORD{ERROR_SUCCESS});
}

TEST(Threads, HaveDifferentNumbersThatStay) {
  const DWORD own = GetCurrentThreadId();
  DWORD other = own;
  std::thread([&] { other = GetCurrentThreadId(); }).join();
  EXPECT_NE(other, own);
  EXPECT_EQ(GetCurrentThreadId(), own);
}

HMODULE ThisModule() {
  static constexpr char kAddressInside = 0;
  HMODULE module = nullptr;
  EXPECT_EQ(Try([&] {
              return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                        reinterpret_cast<LPCWSTR>(&kAddressInside), &module);
            }),
            kSuccess);
  return module;
}

TEST(Modules, AreFoundByAnAddressInsideAndGivenBack) {
  const HMODULE module = ThisModule();
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(ThisModule(), module);
  EXPECT_EQ(Try([&] { return FreeLibrary(module); }), kSuccess);
  EXPECT_EQ(Try([&] { return FreeLibrary(module); }), kSuccess);
}

struct CleanUp {
  std::atomic<bool>& hasCleanedUp;
  ~CleanUp() { hasCleanedUp = true; }
};

DWORD WINAPI LeaveWithTheModule(void* parameter) {
  auto* const work = static_cast<Work*>(parameter);
  const CleanUp cleanUp{work->hasCleanedUp};
  FreeLibraryAndExitThread(work->module, 5);
  work->wentOn = true;
  return 0;
}

// So nothing that needs cleaning up may be on the stack of such a thread.
TEST(Modules, AreGivenBackByAThreadThatEndsThereAndThenWithoutCleaningUp) {
  Work work;
  work.module = ThisModule();
  const Handle thread(CreateThread(nullptr, 0, LeaveWithTheModule, &work, 0, nullptr));
  ASSERT_EQ(WaitForSingleObject(thread.Get(), kPatienceMs), WAIT_OBJECT_0);
  EXPECT_FALSE(work.wentOn);
  EXPECT_FALSE(work.hasCleanedUp);
}

TEST(Processes, HaveANumberAndASession) {
  EXPECT_NE(GetCurrentProcessId(), 0u);
  EXPECT_EQ(GetCurrentProcessId(), GetCurrentProcessId());
  DWORD session = kUntouched;
  EXPECT_EQ(Try([&] { return ProcessIdToSessionId(GetCurrentProcessId(), &session); }), kSuccess);
  EXPECT_NE(session, kUntouched);
}

}  // namespace
