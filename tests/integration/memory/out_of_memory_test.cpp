// Memory that runs out on the library's own threads, wherever they ask for it: it costs the
// connection at most, never the application, and the library comes back when there is memory again.

#include <array>
#include <atomic>
#include <limits>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "integration/integration_test.h"
#include "integration/memory/failing_memory.h"

using namespace support;

namespace {

constexpr int kTilt = 115;
constexpr int kDisplayPath = 135;
constexpr int64_t kEver = std::numeric_limits<int64_t>::max();

// What the application remembers, without memory of its own: it is called on the library's thread.
std::atomic<int32_t> g_latestTilt;
std::mutex g_receivedMutex;
std::condition_variable g_received;

void KORVUISD_CALL OnTilt(void*, int32_t value) {
  {
    const std::lock_guard lock(g_receivedMutex);
    g_latestTilt = value;
  }
  g_received.notify_all();
}

// The latest pause before a reconnection; 0 if there was none.
std::atomic<DWORD> g_latestPauseMs;

// How often each manual request was answered, by its context.
constexpr size_t kRequests = 8;
std::array<std::atomic<int>, kRequests> g_answers;

void KORVUISD_CALL OnAnswer(void* context, const wchar_t* text, size_t* partLengths, size_t) {
  {
    const std::lock_guard lock(g_receivedMutex);
    if (std::wstring_view(text).size() == partLengths[0] + partLengths[1]) {
      ++g_answers.at(reinterpret_cast<uintptr_t>(context));
    }
  }
  g_received.notify_all();
}

class OutOfMemory : public IntegrationTest {
 protected:
  void SetUp() override {
    // The library's own threads, and nobody else's, run out of memory.
    CreateThreadHook::Set(library,
                          [](auto security, size_t stack, auto start, void* argument, DWORD flags,
                             auto id) -> HANDLE {
                            struct Start {
                              LPTHREAD_START_ROUTINE routine;
                              void* argument;
                            };
                            auto own = std::make_unique<Start>(Start{start, argument});
                            const LPTHREAD_START_ROUTINE counted = [](void* parameter) -> DWORD {
                              const Start begun =
                                  *std::unique_ptr<Start>(static_cast<Start*>(parameter));
                              failing_memory::CountHere(true);
                              return begun.routine(begun.argument);
                            };
                            const HANDLE thread = CreateThreadHook::Real(security, stack, counted,
                                                                         own.get(), flags, id);
                            if (thread) static_cast<void>(own.release());
                            return thread;
                          });
    // Pauses are not what this is about, nor the second after which a write to a broken pipe is
    // given up.
    SleepHook::Set(library, [](DWORD) { SleepHook::Real(1); });
    WaitForSingleObjectHook::Set(library, [](HANDLE handle, DWORD timeMs) {
      constexpr DWORD kWrite = 1000;
      constexpr DWORD kReply = 2000;
      if (timeMs == kWrite) return WaitForSingleObjectHook::Real(handle, 100);
      const bool isPause = timeMs != 0 && timeMs != kReply && timeMs != INFINITE;
      if (isPause) g_latestPauseMs = timeMs;
      return WaitForSingleObjectHook::Real(handle, isPause ? 1 : timeMs);
    });

    service.SetValue(Key(kDisplayPath), std::wstring(1200, L'p'));
    library.KorvuISD_SetAPIVersion(9);
    KorvuISD_Callbacks callbacks = {};
    callbacks.OnTiltSensitivity = &OnTilt;
    library.KorvuISD_RegisterCallbacks(&callbacks, nullptr);
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    service.WaitForBatch();
  }

  // All kinds of work for the library's thread, and a connection that is lost on the way.
  void Exercise() {
    AnnounceAndRequest();
    WaitForAnswers({1, 2});
    for (const uintptr_t context : {3u, 4u}) Request(context, Key(kDisplayPath));
    service.BreakBoth();
  }

  void AnnounceAndRequest() {
    ++round;
    const std::wstring number = std::to_wstring(round);
    service.Announce(Key(118), std::wstring(1300, L'k'));  // keystrokes, in three pieces
    service.Announce(Key(117), std::wstring(40, L'e') + number);
    service.Announce(Key(120), L"{\"" + number + L"\":\"a function with a long name\"}");
    service.Announce(Key(119), L"{\"c:\\\\a\\\\long\\\\path.exe\":\"program " + number + L"\"}");
    service.Announce(Key(131), L"{\"\\\\.\\DISPLAY" + number + L"\":\"a monitor with a name\"}");
    service.Announce(Key(6), L"serial number " + number);
    service.Announce(Key(7), L"pen id");
    service.Announce(Key(125), L"{ 1, 2, 3, " + number + L" }");
    service.Announce(Key(kTilt), L"not a number at all, and longer than a short text");
    for (const uintptr_t context : {1u, 2u}) Request(context, Key(kDisplayPath));
    library.KorvuISD_SetTipSensitivity(round, 0);
  }

  void Request(uintptr_t context, const std::wstring& key) {
    g_answers.at(context) = 0;
    requested.insert(context);
    library.SendManual(ScriptedService::ValueRequest(key).c_str(), Context(context), &OnAnswer);
  }

  void WaitForAnswers(const std::vector<size_t>& contexts) {
    std::unique_lock lock(g_receivedMutex);
    ASSERT_TRUE(WaitUntil(lock, g_received,
                          [&] {
                            return std::ranges::all_of(
                                contexts, [](size_t context) { return g_answers[context] > 0; });
                          }))
        << "a manual request was not answered; failures: " << failing_memory::Failed();
  }

  // Expects that the library brings a value which the service has had only since now.
  void ExpectRecovery() {
    const int32_t fresh = 1000 + round;
    service.SetValue(Key(kTilt), std::to_wstring(fresh));
    while (g_latestTilt != fresh) {
      Request(5, Key(kTilt));
      ASSERT_NO_FATAL_FAILURE(WaitForAnswers({5}));
    }
    // The value may be back before the lost connection's requests are answered.
    ASSERT_NO_FATAL_FAILURE(WaitForAnswers({requested.begin(), requested.end()}));
    for (const size_t context : requested) {
      ASSERT_EQ(g_answers[context], 1) << "request " << context;
    }
  }

  ScriptedService service;
  int32_t round = 0;
  std::set<size_t> requested;
};

TEST_F(OutOfMemory, AtAnyOneAllocationCostsTheConnectionAtMost) {
  int64_t first = 1;
  for (;; ++first) {
    SCOPED_TRACE("allocation " + std::to_string(first));
    failing_memory::Fail(first, 1);
    ASSERT_NO_FATAL_FAILURE(Exercise());
    ASSERT_NO_FATAL_FAILURE(ExpectRecovery());
    if (failing_memory::Restore() == 0) break;
  }
  EXPECT_GT(first, 50) << "there is more to fail than that";
}

TEST_F(OutOfMemory, ForSeveralAllocationsInARowCostsTheConnectionAtMost) {
  for (int64_t first = 1;; first += 5) {
    SCOPED_TRACE("allocations from " + std::to_string(first));
    failing_memory::Fail(first, 12);
    ASSERT_NO_FATAL_FAILURE(Exercise());
    ASSERT_NO_FATAL_FAILURE(ExpectRecovery());
    if (failing_memory::Restore() == 0) break;
  }
}

// The service is there all the time: without the pause the library would come back and fail, again
// and again, for as long as there is no memory.
TEST_F(OutOfMemory, IsFollowedByAPauseAlthoughTheConnectionWasGood) {
  service.BreakBoth();
  ASSERT_NO_FATAL_FAILURE(ExpectRecovery());
  EXPECT_EQ(g_latestPauseMs, 0u);

  ++round;
  failing_memory::Fail(1, 1);
  service.Announce(Key(118), std::wstring(1300, L'k'));
  service.WaitForConnections(3);
  EXPECT_EQ(failing_memory::Restore(), 1);
  ASSERT_NO_FATAL_FAILURE(ExpectRecovery());
  EXPECT_EQ(g_latestPauseMs, 100u);
}

class OutOfMemoryForLong : public OutOfMemory, public testing::WithParamInterface<bool> {};

TEST_P(OutOfMemoryForLong, TheLibraryGoesOnTryingAndSucceedsWhenThereIsSomeAgain) {
  if (GetParam()) library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  failing_memory::Fail(1, kEver);
  AnnounceAndRequest();
  service.BreakBoth();
  // Each attempt fails at least once.
  const auto start = Clock::now();
  while (failing_memory::Failed() < 20 && MsSince(start) < kPatience) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_GE(failing_memory::Restore(), 20);
  ExpectRecovery();
}

INSTANTIATE_TEST_SUITE_P(Traced, OutOfMemoryForLong, testing::Bool());

}  // namespace
