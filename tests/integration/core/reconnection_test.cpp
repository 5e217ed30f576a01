// A lost connection comes back by itself, over both pipes.

#include <algorithm>
#include <atomic>

#include "integration/core/fake_time.h"
#include "integration/core/platform_log.h"
#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::Contains;
using testing::ElementsAre;

namespace {

class Reconnection : public IntegrationTest {
 protected:
};

enum class Loss { kSendOnly, kDuplex, kBoth };

class LossOfAPipe : public Reconnection, public testing::WithParamInterface<Loss> {
 protected:
  static void Break(ScriptedService& service) {
    if (GetParam() != Loss::kDuplex) service.BreakSendOnly();
    if (GetParam() != Loss::kSendOnly) service.BreakDuplex();
  }
};

// The duplex pipe's loss shows when something is sent.
TEST_P(LossOfAPipe, BringsTheConnectionBackOnPipesWithOneInstance) {
  ScriptedService service({.singleInstance = true});
  ConnectTo(service);
  for (int connection = 2; connection <= 4; ++connection) {
    Break(service);
    if (GetParam() == Loss::kDuplex) library.KorvuISD_SetTipSensitivity(1, 0);
    service.WaitForConnections(connection);
    ExpectGoodConnection(service);
  }
}

TEST_P(LossOfAPipe, FreesBothPipesBeforeTheReturnOfTheService) {
  ScriptedService service;
  ConnectTo(service);
  // There is no way back yet.
  const DWORD application = GetCurrentThreadId();
  const auto hasAsked = std::make_shared<std::atomic<bool>>(false);
  WaitNamedPipeWHook::Set(library, [=](LPCWSTR, DWORD) -> BOOL {
    if (GetCurrentThreadId() == application) *hasAsked = true;
    SetLastError(ERROR_FILE_NOT_FOUND);
    return FALSE;
  });
  Break(service);
  if (GetParam() == Loss::kDuplex) library.KorvuISD_SetTipSensitivity(1, 0);
  service.WaitForDisconnect();

  // Still, the client counts as connected.
  EXPECT_EQ(library.KorvuISD_Connect(30000), KorvuISD_ErrorNone);
  EXPECT_FALSE(*hasAsked);
  WaitNamedPipeWHook::Clear();
  service.WaitForConnections(2);
  ExpectGoodConnection(service);
}

INSTANTIATE_TEST_SUITE_P(Pipes, LossOfAPipe,
                         testing::Values(Loss::kSendOnly, Loss::kDuplex, Loss::kBoth));

TEST_F(Reconnection, AServiceThatGoesAndComesBackIsFound) {
  ScriptedService service;
  ConnectTo(service);
  service.Vanish();
  EXPECT_EQ(library.KorvuISD_Connect(30000),
            KorvuISD_ErrorNone);  // at once: it counts as connected
  service.Return();
  service.WaitForConnections(2);
  ExpectGoodConnection(service);
}

TEST_F(Reconnection, TheQueueIsDiscardedAndAllValuesAreAskedForAfresh) {
  ScriptedService service;
  service.OnRequest([](const std::wstring& text) -> std::optional<Reaction> {
    if (text == ScriptedService::SetMessage(Key(116), L"77")) {
      return Reaction::Hold(std::wstring(ScriptedService::kAck));
    }
    return std::nullopt;
  });
  ConnectTo(service);
  const auto batch = service.RequestTexts();
  library.KorvuISD_SetTipSensitivity(77, 0);
  service.WaitForHeld();
  for (int i = 0; i < 20; ++i) library.KorvuISD_SetTiltSensitivity(i, 0);
  service.Forget();
  service.SetValue(Key(kTilt), L"6");
  service.BreakBoth();
  service.WaitForConnections(2);
  service.WaitForBatch();
  EXPECT_THAT(recorder.CallsOf(kTiltSlot), Contains(Call{kTiltSlot, Context(1), L"6"}));
  library.KorvuISD_SetTipSensitivity(1, 0);
  service.WaitForRequests(batch.size() + 2);

  auto expectedTexts = batch;
  expectedTexts.push_back(ScriptedService::SetMessage(Key(116), L"1"));
  expectedTexts.push_back(ScriptedService::ValueRequest(Key(116)));
  EXPECT_EQ(service.RequestTexts(), expectedTexts);
}

TEST_F(Reconnection, EachAttemptWaitsThirtySecondsAndTheNextFollowsAtOnce) {
  ScriptedService service;
  ConnectTo(service);
  const Gate twoAttempts;
  FakeTime time(library, [=](size_t round, DWORD) {
    // 31 looks an attempt. No more of them until the test has seen enough.
    if (round == 63) twoAttempts.Pass();
    return PipeWait{};
  });
  service.BreakBoth();
  ASSERT_TRUE(twoAttempts.WaitForArrival());
  std::vector<std::string> attempt;
  for (int left = 30000; left > 0; left -= 1000) {
    attempt.push_back("wait " + std::to_string(left));
    attempt.push_back("sleep 1000");
  }
  attempt.push_back("wait 0");
  auto steps = attempt;
  steps.insert(steps.end(), attempt.begin(), attempt.end());
  twoAttempts.Open();
  auto seen = time.Steps();
  seen.resize(steps.size());
  EXPECT_EQ(seen, steps);
}

TEST_F(Reconnection, TheTraceTellsOfEachAttempt) {
  ScriptedService service;
  ConnectTo(service);
  TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  {
    PlatformLog log(library);
    log.Fail("CreateFileW", 2);
    service.BreakBoth();
    service.WaitForConnections(2);
  }
  service.WaitForBatch();
  auto lines = trace.Lines();
  std::erase_if(lines, [](const std::wstring& line) {
    return line.starts_with(L"SyncThread: ") || line.starts_with(L"SendJSON: ") ||
           line.starts_with(L"ReceiveAck: ");
  });
  lines.erase(lines.begin());  // that tracing is on
  EXPECT_THAT(lines, ElementsAre(L"Connecting...\r\n", L"Couldn't find Service duplex pipe.\r\n",
                                 L"Connecting...\r\n"));
}

class ReconnectionStep : public Reconnection,
                         public testing::WithParamInterface<std::pair<const char*, int>> {};

TEST_P(ReconnectionStep, ThatFailsOnceDelaysTheConnectionOnly) {
  ScriptedService service;
  ConnectTo(service);
  {
    PlatformLog log(library);
    log.Fail(GetParam().first, GetParam().second);
    service.BreakBoth();
    service.WaitForConnections(2);
    service.WaitForBatch();
    EXPECT_THAT(log.LinesOf(GetParam().first), Contains(testing::EndsWith(": failed")));
  }
  ExpectGoodConnection(service);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, ReconnectionStep,
    testing::Values(std::pair{"WaitNamedPipeW", 1}, std::pair{"CreateFileW", 1},
                    std::pair{"SetNamedPipeHandleState", 1}, std::pair{"WaitNamedPipeW", 2},
                    std::pair{"CreateFileW", 2}, std::pair{"SetNamedPipeHandleState", 2},
                    std::pair{"CreateThread", 1}));

}  // namespace
