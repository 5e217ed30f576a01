// Threads that come, call one setter and go leave nothing behind in the process: an application may
// have thousands of them in its life.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <span>
#include <stdexcept>

#include <windows.h>

#include "integration/commands/commands_test.h"
#include "support/process_usage.h"

using namespace support;

namespace {

constexpr int kThreadsPerRound = 5000;
// A single block or handle that every thread leaves behind exceeds this tenfold.
constexpr int64_t kTolerance = kThreadsPerRound / 10;
// 50 bytes a thread: the smallest block with the heap's header and a page's share of the rest.
constexpr int64_t kByteTolerance = kThreadsPerRound * 50;

// In use in all heaps of the process.
int64_t HeapBlocks() {
  std::array<HANDLE, 64> heaps;
  const DWORD heapCount = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  int64_t blocks = 0;
  for (const HANDLE heap : std::span(heaps).first(heapCount)) {
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    HeapUnlock(heap);
  }
  return blocks;
}

struct Usage {
  int64_t privateBytes = PrivateBytes();
  int64_t heapBlocks = HeapBlocks();
  int64_t handles = OpenHandles();
};

std::ostream& operator<<(std::ostream& out, const Usage& usage) {
  return out << usage.privateBytes << " private bytes, " << usage.heapBlocks << " heap blocks, "
             << usage.handles << " handles";
}

// Threads of the system's own: nothing of the test program's runtime is in between.
DWORD WINAPI ThreadMain(void* parameter) {
  (*static_cast<const std::function<void()>*>(parameter))();
  return 0;
}

class ShortLivedThreads : public CommandsTest {
 protected:
  // Without callbacks, so that nothing is recorded.
  void SetUp() override {
    library.KorvuISD_SetAPIVersion(9);
    ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
    service.WaitForBatch();
  }

  // One thread after the other; then until the queue is empty and the service has forgotten all.
  void RunRound(std::function<void()> call, int threadCount) {
    for (int i = 0; i < threadCount; ++i) {
      const HANDLE thread = CreateThread(nullptr, 0, &ThreadMain, &call, 0, nullptr);
      ASSERT_NE(thread, nullptr);
      WaitForSingleObject(thread, INFINITE);  // ends with the call
      CloseHandle(thread);
      if (i % 1000 == 999) {
        SentBeforeFence();
        service.Forget();
      }
    }
    SentBeforeFence();
    service.Forget();
  }

  void ExpectNoGrowth(const std::function<void()>& call) {
    RunRound(call, 1000);  // whatever is made once is there now
    const Usage before;
    RunRound(call, kThreadsPerRound);
    const Usage between;
    RunRound(call, kThreadsPerRound);
    const Usage after;
    std::cout << "before:  " << before << "\nbetween: " << between << "\nafter:   " << after
              << "\n";
    ASSERT_GT(before.privateBytes, 0);
    ASSERT_GT(before.heapBlocks, 0);
    ASSERT_GT(before.handles, 0);
    EXPECT_LT(after.privateBytes - between.privateBytes, kByteTolerance);
    EXPECT_LT(after.heapBlocks - between.heapBlocks, kTolerance);
    EXPECT_LT(after.handles - between.handles, kTolerance);
    EXPECT_LT(after.heapBlocks - before.heapBlocks, kTolerance);
    EXPECT_LT(after.handles - before.handles, kTolerance);
  }
};

TEST_F(ShortLivedThreads, LeaveNothingBehindWhenTheySet) {
  ExpectNoGrowth([this] { library.KorvuISD_SetTiltSensitivity(5, 0); });
}

TEST_F(ShortLivedThreads, LeaveNothingBehindWhenTheSetterThrows) {
  ExpectNoGrowth([this] {
    try {
      library.KorvuISD_SetMenuButtonLimit(255u << 16, 1);
      std::abort();
    } catch (const std::out_of_range&) {
    }
  });
}

}  // namespace
