#include "threads.h"

#include <array>
#include <atomic>
#include <csetjmp>
#include <cstdlib>
#include <memory>
#include <thread>

#include <pthread.h>

#include "handle_table.h"
#include "misuse.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"
#include "scheduler.h"

namespace platform_double {
namespace {

std::atomic<DWORD> g_lastThreadId{1000};

DWORD NextThreadId() {
  return g_lastThreadId += 4;
}

struct ThreadStart {
  LPTHREAD_START_ROUTINE routine;
  LPVOID parameter;
  DWORD id;
  std::shared_ptr<Thread> thread;
};

// In a function of its own, with nothing to destroy in it: AbandonThread comes back here.
void RunRoutine(LPTHREAD_START_ROUTINE routine, LPVOID parameter) {
  std::jmp_buf end;
  CurrentThreadState().end = &end;
  if (setjmp(end) == 0) routine(parameter);
}

void* ThreadMain(void* parameter) {
  const std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(parameter));
  CurrentThreadState().id = start->id;
  RunRoutine(start->routine, start->parameter);
  const KernelLock lock;
  start->thread->End();
  start->thread.reset();
  return nullptr;
}

bool StartDetached(ThreadStart* start) {
  if (Scheduler* const scheduler = ChosenScheduler()) {
    return scheduler->StartThread(&ThreadMain, start);
  }
  pthread_t thread{};
  if (pthread_create(&thread, nullptr, &ThreadMain, start) != 0) return false;
  pthread_detach(thread);
  return true;
}

}  // namespace

void AbandonThread() {
  std::jmp_buf* const end = CurrentThreadState().end;
  if (!end) {
    RefuseCallAsUnsupported("FreeLibraryAndExitThread", "the end of a thread of another kind");
    std::abort();
  }
  std::longjmp(*end, 1);
}

}  // namespace platform_double

using namespace platform_double;

HANDLE CreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackBytes,
                    LPTHREAD_START_ROUTINE routine, LPVOID parameter, DWORD flags, LPDWORD id) {
  if (security || stackBytes || flags) {
    RefuseCallAsUnsupported("CreateThread", "security, a stack size or a late start");
    return nullptr;
  }
  const DWORD newId = NextThreadId();
  auto start = std::make_unique<ThreadStart>(ThreadStart{routine, parameter, newId, nullptr});
  HANDLE handle = nullptr;
  {
    const KernelLock lock;
    start->thread = std::make_shared<Thread>();
    handle = OpenHandle(start->thread);
  }
  if (id) *id = newId;
  if (!StartDetached(start.get())) {
    CloseHandle(handle);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  static_cast<void>(start.release());  // the thread has it now
  return handle;
}

DWORD GetCurrentThreadId() {
  DWORD& id = CurrentThreadState().id;
  if (id == 0) id = NextThreadId();
  return id;
}

void Sleep(DWORD timeMs) {
  if (Scheduler* const scheduler = ChosenScheduler()) {
    scheduler->Sleep(timeMs);
  } else {
    std::this_thread::sleep_for(std::chrono::milliseconds(timeMs));
  }
}
