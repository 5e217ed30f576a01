// How a connection is opened: which calls, with which arguments, and what goes over the pipes
// first.

#include <algorithm>

#include "integration/core/platform_log.h"
#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

class OpenPipes : public IntegrationTest {
 protected:
  // Stands still, so that the whole time-out reaches the platform.
  void StopClock() {
    clockHook::Set(library, [] { return std::clock_t{0}; });
  }

  void TearDown() override { clockHook::Clear(); }

  ScriptedService service;
};

// All of them but those that carry an application's path or keystrokes.
std::vector<std::wstring> ExpectedBatch() {
  std::vector<std::wstring> batch = {std::wstring(ScriptedService::kProbe)};
  const auto& keys = expected::SettingKeys();
  for (const int index : expected::HandledIndices()) {
    batch.push_back(ScriptedService::ValueRequest(keys.at(index)));
  }
  return batch;
}

TEST_F(OpenPipes, EveryCallAndArgumentIsTheAgreedOne) {
  StopClock();
  PlatformLog log(library);
  ASSERT_EQ(library.KorvuISD_Connect(12345), KorvuISD_ErrorNone);
  EXPECT_THAT(
      log.Lines(),
      ElementsAre("WaitNamedPipeW " + SendOnlyPipe() + " 12345",
                  // Reading, and writing attributes; no sharing; opened only if it exists;
                  // overlapped.
                  "CreateFileW " + SendOnlyPipe() + " 80000100 0 null 3 40000000 null: pipe1",
                  "SetNamedPipeHandleState pipe1 2 null null",
                  "WaitNamedPipeW " + DuplexPipe() + " 1000",
                  "CreateFileW " + DuplexPipe() + " c0000000 0 null 3 40000000 null: pipe2",
                  "SetNamedPipeHandleState pipe2 2 null null",
                  "ResetEvent handle1",  // the send event
                  "SetEvent handle1",    // the batch
                  "CreateThread null 0 set set 0: thread1", "CloseHandle thread1"));
  service.WaitForBatch();
}

TEST_F(OpenPipes, TheBatchIsTheProbeAndOneRequestForEachValueInOrder) {
  ConnectTo(service);
  const auto requests = service.Requests();
  EXPECT_THAT(service.RequestTexts(), ElementsAreArray(ExpectedBatch()));
  for (const Request& request : requests) {
    EXPECT_EQ(request.byteCount, request.text.size() * sizeof(wchar_t));
    EXPECT_EQ(request.connection, 1);
  }
}

TEST_F(OpenPipes, TheTraceOfAGoodConnectionSaysConnectingAndNoMore) {
  TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  trace.Forget();
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  const auto lines = trace.Lines();
  EXPECT_EQ(lines.at(0), L"Connecting...\r\n");
  for (size_t i = 1; i < lines.size(); ++i) {
    // The sync thread's own, and those of its exchanges.
    EXPECT_TRUE(lines[i].starts_with(L"SyncThread: ") || lines[i].starts_with(L"SendJSON: ") ||
                lines[i].starts_with(L"ReceiveAck: "))
        << testing::PrintToString(lines[i]);
  }
}

TEST_F(OpenPipes, WhatWasQueuedBeforeTheConnectionIsNeverSent) {
  library.KorvuISD_SetTiltSensitivity(3, 0);
  ConnectTo(service);
  library.KorvuISD_SetTiltSensitivity(4, 0);
  const auto texts = service.WaitForRequests(ScriptedService::kBatchSize + 2);
  auto expectedTexts = ExpectedBatch();
  expectedTexts.push_back(ScriptedService::SetMessage(Key(115), L"4"));
  expectedTexts.push_back(ScriptedService::ValueRequest(Key(115)));
  EXPECT_THAT(texts, ElementsAreArray(expectedTexts));
}

TEST_F(OpenPipes, AConnectedClientAnswersAtOnceAndOpensNothing) {
  ConnectTo(service);
  // Dealt with when nothing is left of the batch.
  service.Announce(Key(kTilt), L"5");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  PlatformLog log(library);
  TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  for (const uint32_t timeoutMs : {0u, 5000u, 4294967295u}) {
    trace.Forget();
    EXPECT_EQ(library.KorvuISD_Connect(timeoutMs), KorvuISD_ErrorNone);
    auto lines = trace.Lines();
    // The sync thread may come to its wait only now.
    std::erase(lines, L"SyncThread: read start.\r\n");
    EXPECT_THAT(lines, ElementsAre(L"Connecting...\r\n"));
  }
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
  EXPECT_THAT(log.Lines(), ElementsAre());

  // What a second connection would have sent stands before this, if anything does.
  library.KorvuISD_SetTiltSensitivity(1, 0);
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  EXPECT_EQ(service.ConnectionCount(), 1);
  EXPECT_EQ(service.Requests().size(), ScriptedService::kBatchSize + 2);
}

TEST_F(OpenPipes, TwoThreadsThatConnectAtOnceGetOneConnection) {
  // Both have seen that there is no connection before either opens one.
  const Gate gate;
  WaitNamedPipeWHook::Set(library, [gate](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    gate.Pass();
    return WaitNamedPipeWHook::Real(name, timeoutMs);
  });
  std::array<KorvuISD_Error, 2> results = {KorvuISD_ErrorFailed, KorvuISD_ErrorFailed};
  std::vector<std::thread> threads;
  for (KorvuISD_Error& result : results) {
    threads.emplace_back([&] { result = library.KorvuISD_Connect(20000); });
  }
  EXPECT_TRUE(gate.WaitForArrivals(2));
  gate.Open();
  for (std::thread& thread : threads) thread.join();
  WaitNamedPipeWHook::Clear();
  EXPECT_THAT(results, ElementsAre(KorvuISD_ErrorNone, KorvuISD_ErrorNone));

  service.WaitForBatch();
  library.KorvuISD_SetTiltSensitivity(1, 0);
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  EXPECT_EQ(service.ConnectionCount(), 1);
  EXPECT_EQ(service.Requests().size(), ScriptedService::kBatchSize + 2);
}

}  // namespace
