// Threads that trace at the same time: every line is whole, and none is lost.

#include <algorithm>
#include <functional>
#include <map>
#include <thread>

#include "integration/core/trace_test.h"
#include "support/gate.h"

using namespace support;

namespace {

// Lines of the file without their ends; a file that does not end with a line end has a last, cut
// one.
std::vector<std::string> LinesOf(const std::string& bytes) {
  std::vector<std::string> lines;
  const std::string end = "\r\r\n";
  size_t from = 0;
  while (from < bytes.size()) {
    const size_t to = std::min(bytes.find(end, from), bytes.size());
    lines.push_back(bytes.substr(from, to - from));
    from = to + end.size();
  }
  return lines;
}

class TraceThreads : public TraceTest {
 protected:
  static constexpr int kThreads = 4;
  static constexpr int kLines = 1500;

  // All threads trace numbers from 0 to -kLines: below 10 they go out as they are.
  void TraceWith(int threadCount, const std::function<void()>& meanwhile) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
      threads.emplace_back([this] {
        for (int line = 1; line <= kLines; ++line) library.KorvuISD_SetAPIVersion(-line);
      });
    }
    meanwhile();
    for (std::thread& thread : threads) thread.join();
  }
};

TEST_F(TraceThreads, LinesAreNeverInterleavedOrLost) {
  SwitchOn();
  TraceWith(kThreads, [] {});
  SwitchOff();
  const auto lines = LinesOf(Bytes(FileName()).value_or(""));
  ASSERT_EQ(lines.size(), size_t{kThreads} * kLines + 2);
  EXPECT_EQ(debugger->Lines().size(), lines.size());

  // Each thread's lines are complete and in order.
  const std::string head = "09:05:17.042 -- " + Padded(GetCurrentProcessId(), 5) + "/";
  std::map<std::string, int> lastOf;
  for (size_t i = 1; i + 1 < lines.size(); ++i) {
    ASSERT_EQ(lines[i].substr(0, head.size()), head) << i;
    const size_t threadEnd = lines[i].find(" -- ", head.size());
    const std::string thread = lines[i].substr(head.size(), threadEnd - head.size());
    ASSERT_EQ(lines[i].substr(threadEnd),
              " -- Using API Version: -" + std::to_string(++lastOf[thread]) + ".");
  }
  EXPECT_EQ(lastOf.size(), size_t{kThreads});
}

TEST_F(TraceThreads, SwitchingOnAndOffMeanwhileCutsNoLine) {
  SwitchOn();
  TraceWith(2, [this] {
    for (int i = 0; i < 200; ++i) {
      SwitchOff();
      SwitchOn();
    }
  });
  SwitchOff();
  const std::string opening = Opening().substr(0, Opening().size() - 3);
  const std::string closing = Closing().substr(0, Closing().size() - 3);
  const std::string head = "09:05:17.042 -- " + Padded(GetCurrentProcessId(), 5) + "/";
  size_t openings = 0;
  bool isOpen = false;
  for (const std::string& line : LinesOf(Bytes(FileName()).value_or(""))) {
    if (line == opening) {
      ASSERT_FALSE(isOpen);
      isOpen = true;
      ++openings;
    } else if (line == closing) {
      ASSERT_TRUE(isOpen);
      isOpen = false;
    } else {
      // Between an opening and the next closing line only.
      ASSERT_TRUE(isOpen) << line;
      ASSERT_EQ(line.substr(0, head.size()), head);
      ASSERT_NE(line.find(" -- Using API Version: -"), std::string::npos) << line;
      ASSERT_EQ(line.back(), '.');
    }
  }
  EXPECT_EQ(openings, 201u);
  EXPECT_FALSE(isOpen);
}

TEST_F(TraceThreads, ALineThatIsUnderWayIsFinishedBeforeTheFileIsClosed) {
  SwitchOn();
  // The thread is stopped on its way to the file.
  const Gate gate;
  const DWORD switching = GetCurrentThreadId();
  const SYSTEMTIME time = At(9, 5);
  GetLocalTimeHook::Set(library, [=](SYSTEMTIME* now) {
    if (GetCurrentThreadId() != switching) gate.Pass();
    *now = time;
  });
  std::thread tracing([&] { library.KorvuISD_SetAPIVersion(4); });
  EXPECT_TRUE(gate.WaitForArrival());
  std::thread opening([gate] {
    // Time enough for a wrong library to close the file; a right one waits anyway.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    gate.Open();
  });
  SwitchOff();
  opening.join();
  tracing.join();
  const auto lines = LinesOf(Bytes(FileName()).value_or(""));
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_THAT(lines[1], testing::EndsWith(" -- Using API Version: 4."));
  EXPECT_EQ(lines[2] + "\r\r\n", Closing());
}

TEST_F(TraceThreads, ALineThatComesTooLateDoesNotOpenTheFileAgain) {
  SwitchOn();
  // The thread has seen that tracing is on, and is stopped before it writes.
  const Gate gate;
  const DWORD switching = GetCurrentThreadId();
  _vscwprintfHook::Set(library, [=](auto... arguments) {
    if (GetCurrentThreadId() != switching) gate.Pass();
    return _vscwprintfHook::Real(arguments...);
  });
  std::thread tracing([&] { library.KorvuISD_SetAPIVersion(4); });
  EXPECT_TRUE(gate.WaitForArrival());
  SwitchOff();
  gate.Open();
  tracing.join();
  _vscwprintfHook::Clear();
  EXPECT_EQ(Bytes(FileName()), Opening() + Closing());
  EXPECT_EQ(debugger->Lines().back(), L"Using API Version: 4.\r\n");
}

// The sync thread traces while applications do.
TEST_F(TraceThreads, TheLibrarysOwnThreadIsOneOfThem) {
  ScriptedService service;
  SwitchOn();
  ConnectTo(service);
  service.Forget();
  TraceWith(1, [&] {
    for (int i = 0; i < 200; ++i) library.KorvuISD_SetTiltSensitivity(i, 0);
  });
  service.WaitForRequests(400);
  SwitchOff();
  const std::string head = "09:05:17.042 -- " + Padded(GetCurrentProcessId(), 5) + "/";
  size_t versions = 0;
  for (const std::string& line : LinesOf(Bytes(FileName()).value_or(""))) {
    ASSERT_EQ(line.substr(0, head.size()), head);
    ASSERT_EQ(line.find(head, 1), std::string::npos) << line;
    if (line.find("Using API Version: -") != std::string::npos) ++versions;
  }
  EXPECT_EQ(versions, size_t{kLines});
}

}  // namespace
