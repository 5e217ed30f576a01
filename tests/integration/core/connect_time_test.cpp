// The time-out of KorvuISD_Connect, to the millisecond. A finite one counts the time inside
// WaitNamedPipeW twice: applications have tuned theirs to that, so it must stay.
//
// There is no service in these tests. A wait that ends with 1 is therefore followed by a failure to
// open the pipe, which is how they see that the wait is over.

#include "integration/core/fake_time.h"
#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;

namespace {

const std::wstring kFound = L"Couldn't find Service send only pipe.\r\n";

class ConnectTime : public IntegrationTest {
 protected:
  void SetUp() override {
    trace.emplace(library);
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
    trace->Forget();
  }

  // Connects under fake time, and expects the trace to end with `lastLine`.
  void Connect(FakeTime& time, uint32_t timeoutMs, const std::wstring& lastLine) {
    const int64_t start = time.NowMs();
    EXPECT_EQ(library.KorvuISD_Connect(timeoutMs), KorvuISD_ErrorFailed);
    elapsedMs = time.NowMs() - start;
    EXPECT_THAT(trace->Lines(), ElementsAre(L"Connecting...\r\n", lastLine));
  }

  static std::wstring TimedOut(DWORD error) {
    return L"Timed out waiting for Service send only pipe: " + std::to_wstring(error) + L".\r\n";
  }

  std::optional<TraceRecorder> trace;
  int64_t elapsedMs = 0;
};

TEST_F(ConnectTime, WithoutThePipeItLooksEverySecondAndOnceMoreAtTheEnd) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{}; });
  Connect(time, 2500, TimedOut(ERROR_FILE_NOT_FOUND));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 2500", "sleep 1000", "wait 1500", "sleep 1000",
                                        "wait 500", "sleep 500", "wait 0"));
  EXPECT_EQ(elapsedMs, 2500);
}

TEST_F(ConnectTime, TheWaitIsForTheSendOnlyPipeOnly) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{}; });
  Connect(time, 2500, TimedOut(ERROR_FILE_NOT_FOUND));
  EXPECT_THAT(time.PipeNames(), Each(L"\\\\.\\pipe\\KorvuSettingsSyncherSendOnly_" +
                                     std::to_wstring(GetCurrentProcessId())));
}

TEST_F(ConnectTime, ATimeoutOfAWholeNumberOfSecondsEndsAfterThem) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{}; });
  Connect(time, 2000, TimedOut(ERROR_FILE_NOT_FOUND));
  EXPECT_THAT(time.Steps(),
              ElementsAre("wait 2000", "sleep 1000", "wait 1000", "sleep 1000", "wait 0"));
  EXPECT_EQ(elapsedMs, 2000);
}

TEST_F(ConnectTime, TheSmallestTimeoutLooksTwice) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{}; });
  Connect(time, 1, TimedOut(ERROR_FILE_NOT_FOUND));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 1", "sleep 1", "wait 0"));
}

TEST_F(ConnectTime, ABusyPipeThatBlocksTheWholeTimeoutEndsIt) {
  FakeTime time(library, [](size_t, DWORD timeoutMs) {
    return PipeWait{timeoutMs, FALSE, ERROR_SEM_TIMEOUT};
  });
  Connect(time, 2000, TimedOut(ERROR_SEM_TIMEOUT));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 2000"));
}

TEST_F(ConnectTime, TimeInsideTheWaitCountsTwice) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{300, FALSE, ERROR_SEM_TIMEOUT}; });
  Connect(time, 4000, TimedOut(ERROR_SEM_TIMEOUT));
  // 4000 - 300 right after the wait; then 300 again with the second of sleep; and so on.
  EXPECT_THAT(time.Steps(), ElementsAre("wait 4000", "sleep 1000", "wait 2400", "sleep 1000",
                                        "wait 800", "sleep 500", "wait 0"));
  EXPECT_EQ(elapsedMs, 3700);
}

TEST_F(ConnectTime, AWaitThatTakesHalfOfTheTimeoutLeavesNothing) {
  FakeTime time(library, [](size_t round, DWORD) {
    return PipeWait{round == 1 ? 1000 : 0, FALSE, ERROR_SEM_TIMEOUT};
  });
  Connect(time, 2000, TimedOut(ERROR_SEM_TIMEOUT));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 2000", "sleep 1000", "wait 0"));
  EXPECT_EQ(elapsedMs, 2000);
}

TEST_F(ConnectTime, AWaitLongerThanTheTimeoutDoesNotTurnTheBudgetNegative) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{90000, FALSE, ERROR_SEM_TIMEOUT}; });
  Connect(time, 2000, TimedOut(ERROR_SEM_TIMEOUT));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 2000"));
}

// After 24.8 days. What has passed before and after it adds up as at any other time.
TEST_F(ConnectTime, AClockThatWrapsCountsOn) {
  for (const int64_t ticksToWrap : {0, 100, 1000 * 1000}) {
    trace->Forget();
    FakeTime time(
        library,
        [](size_t, DWORD) {
          return PipeWait{300, FALSE, ERROR_SEM_TIMEOUT};
        },
        ticksToWrap);
    Connect(time, 4000, TimedOut(ERROR_SEM_TIMEOUT));
    EXPECT_THAT(time.Steps(), ElementsAre("wait 4000", "sleep 1000", "wait 2400", "sleep 1000",
                                          "wait 800", "sleep 500", "wait 0"));
  }
}

TEST_F(ConnectTime, AClockThatStepsBackGivesNoTimeBack) {
  FakeTime time(library, [](size_t round, DWORD) {
    return PipeWait{round == 1 ? -5000 : 0, FALSE, ERROR_SEM_TIMEOUT};
  });
  Connect(time, 2000, TimedOut(ERROR_SEM_TIMEOUT));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 2000", "sleep 1000", "wait 2000", "sleep 1000",
                                        "wait 1000", "sleep 1000", "wait 0"));
}

TEST_F(ConnectTime, TheLongestFiniteTimeoutSurvivesAClockThatStepsBack) {
  FakeTime time(library, [](size_t round, DWORD) {
    return PipeWait{round == 1 ? -90000 : 0, round == 2, ERROR_SEM_TIMEOUT};
  });
  Connect(time, 4294967294, kFound);
  EXPECT_THAT(time.Steps(), ElementsAre("wait 4294967294", "sleep 1000", "wait 4294967294"));
}

TEST_F(ConnectTime, TheErrorInTheTraceIsThatOfTheLastWait) {
  FakeTime time(library, [](size_t round, DWORD) {
    return PipeWait{0, FALSE, round == 1 ? DWORD{ERROR_FILE_NOT_FOUND} : DWORD{ERROR_BAD_PATHNAME}};
  });
  Connect(time, 400, TimedOut(161));
  EXPECT_THAT(time.Steps(), ElementsAre("wait 400", "sleep 400", "wait 0"));
}

TEST_F(ConnectTime, APipeThatAppearsEndsTheWait) {
  FakeTime time(library, [](size_t round, DWORD) { return PipeWait{0, round == 3, 0}; });
  Connect(time, 30000, kFound);
  EXPECT_THAT(time.Steps(),
              ElementsAre("wait 30000", "sleep 1000", "wait 29000", "sleep 1000", "wait 28000"));
}

TEST_F(ConnectTime, APipeThatAppearsAtTheVeryLastLookIsTaken) {
  FakeTime time(library, [](size_t round, DWORD) { return PipeWait{0, round == 2, 0}; });
  Connect(time, 500, kFound);
  EXPECT_THAT(time.Steps(), ElementsAre("wait 500", "sleep 500", "wait 0"));
}

TEST_F(ConnectTime, ZeroWaitsWithoutEndAMillisecondAtATime) {
  // Neither sleeping nor blocking uses anything up, an hour of each wait included.
  constexpr size_t kRounds = 400;
  FakeTime time(library, [](size_t round, DWORD) {
    return PipeWait{3600 * 1000, round == kRounds, ERROR_SEM_TIMEOUT};
  });
  Connect(time, 0, kFound);
  std::vector<std::string> steps;
  for (size_t round = 1; round < kRounds; ++round) {
    steps.insert(steps.end(), {"wait 1", "sleep 1"});
  }
  steps.push_back("wait 1");
  EXPECT_EQ(time.Steps(), steps);
}

TEST_F(ConnectTime, ForeverWaitsWithoutEndAndLooksEverySecond) {
  constexpr size_t kRounds = 400;
  FakeTime time(library, [](size_t round, DWORD) {
    return PipeWait{round % 2 ? 0 : 3600 * 1000, round == kRounds, ERROR_FILE_NOT_FOUND};
  });
  Connect(time, 4294967295, kFound);
  std::vector<std::string> steps;
  for (size_t round = 1; round < kRounds; ++round) {
    steps.insert(steps.end(), {"wait 4294967295", "sleep 1000"});
  }
  steps.push_back("wait 4294967295");
  EXPECT_EQ(time.Steps(), steps);
}

TEST_F(ConnectTime, OneLessThanForeverIsFinite) {
  FakeTime time(library, [](size_t round, DWORD) { return PipeWait{0, round == 2, 0}; });
  Connect(time, 4294967294, kFound);
  EXPECT_THAT(time.Steps(), ElementsAre("wait 4294967294", "sleep 1000", "wait 4294966294"));
}

TEST_F(ConnectTime, AnAnswerThatIsNeitherYesNorNoIsTakenAsYesOnlyAtTheEnd) {
  FakeTime time(library, [](size_t, DWORD) { return PipeWait{0, 2, 0}; });
  Connect(time, 1500, kFound);
  EXPECT_THAT(time.Steps(),
              ElementsAre("wait 1500", "sleep 1000", "wait 500", "sleep 500", "wait 0"));
}

// Real time: the clock, the sleep and the wait are the platform's ------------------------------

TEST_F(ConnectTime, TwoSecondsWithoutAServiceAreAboutTwoSeconds) {
  const auto start = Clock::now();
  EXPECT_EQ(library.KorvuISD_Connect(2000), KorvuISD_ErrorFailed);
  const auto elapsed = MsSince(start);
  EXPECT_THAT(trace->Lines(), ElementsAre(L"Connecting...\r\n", TimedOut(ERROR_FILE_NOT_FOUND)));
  // It sleeps for all of it, so it can hardly be sooner; later it is on a machine that is busy.
  EXPECT_GE(elapsed.count(), 1500);
  EXPECT_LE(elapsed.count(), 10000);
}

class ConnectWithoutEnd : public ConnectTime, public testing::WithParamInterface<uint32_t> {};

TEST_P(ConnectWithoutEnd, EndsWhenTheServiceComes) {
  const Gate looks = OpenGate();
  WaitNamedPipeWHook::Set(library, [looks](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    const BOOL found = WaitNamedPipeWHook::Real(name, timeoutMs);
    const DWORD error = GetLastError();
    looks.Pass();
    SetLastError(error);
    return found;
  });

  KorvuISD_Error result = KorvuISD_ErrorFailed;
  std::thread connecting([&] { result = library.KorvuISD_Connect(GetParam()); });
  EXPECT_TRUE(looks.WaitForArrivals(3));
  ScriptedService service;
  connecting.join();
  WaitNamedPipeWHook::Clear();
  EXPECT_EQ(result, KorvuISD_ErrorNone);
  service.WaitForBatch();
}

INSTANTIATE_TEST_SUITE_P(Timeouts, ConnectWithoutEnd, testing::Values(0u, 4294967295u));

}  // namespace
