// Setters that are called while the library shuts down send nothing and do not wait.

#include <array>
#include <atomic>
#include <future>
#include <thread>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

class SettersDuringShutdown : public CommandsTest {
 protected:
  ~SettersDuringShutdown() override {
    recorder.WhenCalled({});
    SleepHook::Clear();
  }

  // Connects again, and sees nothing but what a connection itself asks for.
  void ExpectNothingLeftOver() {
    service.Forget();
    const int connection = service.ConnectionCount() + 1;
    ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
    service.WaitForConnections(connection);
    service.WaitForBatch();
    EXPECT_EQ(SentBeforeFence(), Batch());
  }
};

TEST_F(SettersDuringShutdown, SendNothingFromACallbackThatTheShutdownWaitsFor) {
  ConnectTo(service);
  service.Forget();

  std::promise<void> inCallback;
  std::promise<void> shutdownWaits;
  std::promise<void> callbackDone;
  std::future<void> waits = shutdownWaits.get_future();
  std::future<void> done = callbackDone.get_future();
  std::atomic<bool> told{false};
  SleepHook::Set(library, [&](DWORD ms) {
    if (!told.exchange(true)) shutdownWaits.set_value();
    SleepHook::Real(ms);
  });
  recorder.WhenCalled([&](const Call&) {
    recorder.WhenCalled({});
    inCallback.set_value();
    waits.wait_for(kPatience);
    library.KorvuISD_SetTiltSensitivity(5, 0);
    library.KorvuISD_SetEraserSinglePress(Assignment(8, L"Ctrl+Z").Get(), 0);
    library.KorvuISD_StartKeyCapture();
    wchar_t buffer[16];
    library.KorvuISD_FinishKeyCapture(buffer, 16);
    callbackDone.set_value();
  });
  service.Announce(Key(kTiltSensitivity), L"5");
  ASSERT_EQ(inCallback.get_future().wait_for(kPatience), std::future_status::ready);

  std::thread shutdown([&] { library.KorvuISD_Shutdown(); });
  const auto status = done.wait_for(kPatience);
  shutdown.join();
  SleepHook::Clear();
  ASSERT_EQ(status, std::future_status::ready);
  ASSERT_TRUE(told);
  service.WaitForDisconnect();
  EXPECT_EQ(service.RequestTexts(), Messages());
  ExpectNothingLeftOver();
}

TEST_F(SettersDuringShutdown, ComeBackOnEveryThreadAndLeaveNothingOver) {
  constexpr size_t kThreads = 4;
  ConnectTo(service);

  std::array<std::atomic<int>, kThreads> calls{};
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (std::atomic<int>& own : calls) {
    threads.emplace_back([&] {
      const Assignment keys(8, L"Ctrl+Z");
      while (!stop) {
        library.KorvuISD_SetTiltSensitivity(5, 0);
        library.KorvuISD_SetMenuOp(0, keys.Get(), 0, L"Undo");
        library.KorvuISD_StartKeyCapture();
        wchar_t buffer[4];
        library.KorvuISD_FinishKeyCapture(buffer, 4);
        ++own;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
      }
    });
  }
  const auto waitForCalls = [&](int more) {
    std::array<int, kThreads> goal;
    for (size_t i = 0; i < kThreads; ++i) goal[i] = calls[i] + more;
    const auto start = Clock::now();
    while (MsSince(start) < kPatience) {
      bool reached = true;
      for (size_t i = 0; i < kThreads; ++i) reached = reached && calls[i] >= goal[i];
      if (reached) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
  };
  const bool calledBefore = waitForCalls(10);
  library.KorvuISD_Shutdown();
  const bool calledAfter = waitForCalls(10);
  stop = true;
  for (std::thread& thread : threads) thread.join();
  ASSERT_TRUE(calledBefore);
  ASSERT_TRUE(calledAfter);
  service.WaitForDisconnect();
  ExpectNothingLeftOver();
}

}  // namespace
