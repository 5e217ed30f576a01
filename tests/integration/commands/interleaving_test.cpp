// Setters of many threads at once: the messages of one call stay together.

#include <array>
#include <atomic>
#include <cstdint>
#include <iostream>
#include <optional>
#include <span>
#include <thread>

#include "integration/commands/commands_test.h"
#include "support/fault_rounds.h"

using namespace support;

namespace {

constexpr int kThreads = 8;
constexpr int kUpperSide = 25;
constexpr int kSouthWedge = 54;

class Interleaving : public ConnectedCommandsTest {
 protected:
  // As many as let the threads meet at the queue again and again; each message is an exchange,
  // which takes a loaded machine half a millisecond.
  static int CallsPerThread() {
    static const int calls = 50 * FaultRounds(4);
    return calls;
  }

  // Every call has a number of its own.
  static int32_t Number(int thread, int call) { return 1'000'000 + thread * 10'000'000 + call; }

  // Five calls in eight have two messages, the others three, four and five.
  void Call(int32_t number) {
    const std::wstring text = std::to_wstring(number);
    switch (number % 8) {
      case 0:
        library.KorvuISD_SetEraserSinglePress(Assignment::WithoutText(number).Get(), 0);
        break;
      case 3:
        library.KorvuISD_SetTopSinglePress(Assignment(8, text).Get(), 0);
        break;
      case 5:
        library.KorvuISD_SetMenuOp(2, Assignment(23, L"app " + text).Get(), 0, text.c_str());
        break;
      default:
        library.KorvuISD_SetTiltSensitivity(number, 0);
        break;
    }
  }

  static Messages MessagesOf(int32_t number) {
    const std::wstring text = std::to_wstring(number);
    switch (number % 8) {
      case 0:
        return {Set(kEraserSingle, text), Request(kEraserSingle), Request(kEraserSingle + 2)};
      case 3:
        return {Set(kUpperSide, L"8"), Set(kUpperSide + 3, text), Request(kUpperSide),
                Request(kUpperSide + 2)};
      case 5:
        return {Set(kSouthWedge, L"23"), Set(kSouthWedge + 1, L"app " + text),
                Set(kSouthWedge + 2, text), Request(kSouthWedge), Request(kSouthWedge + 2)};
      default:
        return {Set(kTiltSensitivity, text), Request(kTiltSensitivity)};
    }
  }

  // Takes the messages apart into whole calls, each the next one of some thread.
  static void ExpectWholeCallsInOrder(const Messages& sent) {
    std::array<int, kThreads> next{};
    std::array<Messages, kThreads> expected;
    for (int thread = 0; thread < kThreads; ++thread) {
      expected[static_cast<size_t>(thread)] = MessagesOf(Number(thread, 0));
    }
    int switches = 0;
    size_t previous = 0;
    for (size_t at = 0; at < sent.size();) {
      const std::span rest(sent.begin() + static_cast<std::ptrdiff_t>(at), sent.end());
      std::optional<size_t> caller;
      for (size_t thread = 0; thread < kThreads && !caller; ++thread) {
        const Messages& whole = expected[thread];
        if (next[thread] < CallsPerThread() && rest.size() >= whole.size() &&
            std::ranges::equal(rest.first(whole.size()), whole)) {
          caller = thread;
        }
      }
      ASSERT_TRUE(caller) << "at message " << at << ": " << sent[at];
      at += expected[*caller].size();
      switches += *caller != previous;
      previous = *caller;
      expected[*caller] = MessagesOf(Number(static_cast<int>(*caller), ++next[*caller]));
    }
    for (const int count : next) EXPECT_EQ(count, CallsPerThread());
    std::cout << "the queue changed from one thread's calls to another's " << switches
              << " times\n";
    RecordProperty("switches", switches);
  }
};

TEST_F(Interleaving, EveryCallOfEightThreadsArrivesInOnePiece) {
  service.Forget();
  size_t total = 0;
  for (int thread = 0; thread < kThreads; ++thread) {
    for (int call = 0; call < CallsPerThread(); ++call) {
      total += MessagesOf(Number(thread, call)).size();
    }
  }

  const auto start = Clock::now();
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      ++ready;
      while (ready < kThreads) std::this_thread::yield();
      for (int call = 0; call < CallsPerThread(); ++call) Call(Number(thread, call));
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto calledMs = MsSince(start).count();
  service.WaitForRequests(total);
  const auto arrivedMs = MsSince(start).count();

  std::cout << kThreads * CallsPerThread() << " calls made in " << calledMs << " ms; " << total
            << " messages exchanged in " << arrivedMs << " ms\n";
  RecordProperty("callsMs", static_cast<int>(calledMs));
  RecordProperty("exchangedMs", static_cast<int>(arrivedMs));
  const Messages sent = SentBeforeFence();
  EXPECT_EQ(sent.size(), total);
  ExpectWholeCallsInOrder(sent);
}

}  // namespace
