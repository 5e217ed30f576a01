// Each step of opening a connection that can fail: what the application is told, what the trace
// says, which handles are closed, and that the next attempt works.

#include "integration/core/platform_log.h"
#include "integration/integration_test.h"
#include "support/pipe_instance.h"

using namespace support;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class OpenPipesFailure : public IntegrationTest {
 protected:
  void SetUp() override {
    trace.emplace(library);
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
    trace->Forget();
  }

  void ExpectFailure(const std::wstring& reason) {
    EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorFailed);
    EXPECT_THAT(trace->Lines(), ElementsAre(L"Connecting...\r\n", reason));
  }

  // To a service that lets only one client in: nothing of the failed attempt may still be open.
  void ExpectThatTheNextAttemptWorks(ScriptedService& service) {
    EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
    service.WaitForBatch();
  }

  static constexpr PipeOffer kSingle{.singleInstance = true};
  std::optional<TraceRecorder> trace;
};

TEST_F(OpenPipesFailure, ASendOnlyPipeThatCannotBeOpenedFails) {
  ScriptedService service(kSingle);
  {
    PlatformLog log(library);
    log.Fail("CreateFileW", 1);
    ExpectFailure(L"Couldn't find Service send only pipe.\r\n");
    EXPECT_EQ(log.LinesOf("CreateFileW").size(), 1u);
    EXPECT_THAT(log.LinesOf("CloseHandle"), IsEmpty());
  }
  ExpectThatTheNextAttemptWorks(service);
}

TEST_F(OpenPipesFailure, ASendOnlyPipeThatVanishesAfterTheWaitFails) {
  WaitNamedPipeWHook::Set(library, [](LPCWSTR, DWORD) -> BOOL { return TRUE; });
  ExpectFailure(L"Couldn't find Service send only pipe.\r\n");
  WaitNamedPipeWHook::Clear();
}

TEST_F(OpenPipesFailure, ASendOnlyPipeThatRefusesMessageModeIsClosed) {
  ScriptedService service(kSingle);
  {
    PlatformLog log(library);
    log.Fail("SetNamedPipeHandleState", 1);
    ExpectFailure(L"Failed to transition to read mode.\r\n");
    EXPECT_EQ(log.LinesOf("WaitNamedPipeW").size(), 1u);
    EXPECT_THAT(log.LinesOf("CloseHandle"), ElementsAre("CloseHandle pipe1"));
  }
  ExpectThatTheNextAttemptWorks(service);
}

TEST_F(OpenPipesFailure, APipeOfBytesIsRefused) {
  ScriptedService service({.byteMode = true});
  ExpectFailure(L"Failed to transition to read mode.\r\n");
  service.WaitForDisconnect();
}

TEST_F(OpenPipesFailure, ADuplexPipeThatIsNotFreeInTimeFailsAndKeepsTheSendOnlyHandle) {
  ScriptedService service;
  PlatformLog log(library);
  log.Fail("WaitNamedPipeW", 2, ERROR_SEM_TIMEOUT);
  ExpectFailure(L"Timed out waiting for Service duplex pipe: 121.\r\n");
  EXPECT_EQ(log.LinesOf("CreateFileW").size(), 1u);
  EXPECT_THAT(log.LinesOf("CloseHandle"), IsEmpty());

  // It is not the connection's handle either: the next attempt opens another.
  EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  EXPECT_THAT(log.LinesOf("CreateFileW"),
              ElementsAre(testing::EndsWith(": pipe1"), testing::EndsWith(": pipe2"),
                          testing::EndsWith(": pipe3")));
  library.KorvuISD_Shutdown();
  ASSERT_TRUE(log.WaitForLine("CloseHandle pipe3"));
  EXPECT_THAT(log.LinesOf("CloseHandle"), Contains("CloseHandle pipe2"));
  EXPECT_THAT(log.LinesOf("CloseHandle"), testing::Not(Contains("CloseHandle pipe1")));
}

TEST_F(OpenPipesFailure, AServiceWithoutDuplexPipeKeepsItsSendOnlyClient) {
  ScriptedService service({.duplex = false, .singleInstance = true});
  ExpectFailure(L"Timed out waiting for Service duplex pipe: 2.\r\n");
  // Its only instance is still taken, so the next attempt waits for it in vain.
  trace->Forget();
  EXPECT_EQ(library.KorvuISD_Connect(300), KorvuISD_ErrorFailed);
  EXPECT_THAT(
      trace->Lines(),
      ElementsAre(L"Connecting...\r\n", L"Timed out waiting for Service send only pipe: 121.\r\n"));
}

TEST_F(OpenPipesFailure, ABusyDuplexPipeIsWaitedForASecond) {
  ScriptedService service({.duplex = false});
  const std::string name = DuplexPipe();
  const std::wstring wideName(name.begin(), name.end());
  PipeInstance duplex(wideName, kSingle);
  const HANDLE occupant = CreateFileW(wideName.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
  ASSERT_NE(occupant, INVALID_HANDLE_VALUE);
  const auto start = Clock::now();
  ExpectFailure(L"Timed out waiting for Service duplex pipe: 121.\r\n");
  EXPECT_GE(MsSince(start).count(), 800);
  CloseHandle(occupant);
}

TEST_F(OpenPipesFailure, ADuplexPipeThatCannotBeOpenedClosesTheSendOnlyPipe) {
  ScriptedService service(kSingle);
  {
    PlatformLog log(library);
    log.Fail("CreateFileW", 2);
    ExpectFailure(L"Couldn't find Service duplex pipe.\r\n");
    EXPECT_THAT(log.LinesOf("CloseHandle"), ElementsAre("CloseHandle pipe1"));
  }
  ExpectThatTheNextAttemptWorks(service);
}

TEST_F(OpenPipesFailure, ADuplexPipeThatRefusesMessageModeClosesBothPipes) {
  ScriptedService service(kSingle);
  {
    PlatformLog log(library);
    log.Fail("SetNamedPipeHandleState", 2);
    ExpectFailure(L"Failed to transition to read mode.\r\n");
    EXPECT_THAT(log.LinesOf("CloseHandle"),
                UnorderedElementsAre("CloseHandle pipe1", "CloseHandle pipe2"));
  }
  ExpectThatTheNextAttemptWorks(service);
}

TEST_F(OpenPipesFailure, AFailedAttemptStartsNothing) {
  ScriptedService service(kSingle);
  PlatformLog log(library);
  log.Fail("SetNamedPipeHandleState", 2);
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorFailed);
  EXPECT_THAT(log.LinesOf("CreateThread"), IsEmpty());
  EXPECT_THAT(log.LinesOf("ResetEvent"), IsEmpty());
  EXPECT_THAT(log.LinesOf("SetEvent"), IsEmpty());
}

TEST_F(OpenPipesFailure, WithoutAThreadThePipesStayOpenAndCountAsConnected) {
  ScriptedService service;
  PlatformLog log(library);
  log.Fail("CreateThread", 1);
  ExpectFailure(L"Failed to create sync thread.\r\n");
  EXPECT_THAT(log.LinesOf("CloseHandle"), IsEmpty());
  // The batch waits for a thread.
  EXPECT_EQ(log.LinesOf("SetEvent").size(), 1u);

  log.Forget();
  EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  EXPECT_THAT(log.Lines(), IsEmpty());
  service.WaitForConnections(1);
  EXPECT_EQ(service.ConnectionCount(), 1);
  EXPECT_THAT(service.Requests(), IsEmpty());
}

TEST_F(OpenPipesFailure, WithTracingOffTheReactionIsTheSame) {
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
  trace->Forget();
  ScriptedService service(kSingle);
  for (const auto& [function, nth] :
       std::initializer_list<std::pair<const char*, int>>{{"CreateFileW", 1},
                                                          {"SetNamedPipeHandleState", 1},
                                                          {"CreateFileW", 2},
                                                          {"SetNamedPipeHandleState", 2}}) {
    PlatformLog log(library);
    log.Fail(function, nth);
    EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorFailed);
  }
  ExpectThatTheNextAttemptWorks(service);
  EXPECT_THAT(trace->Lines(), IsEmpty());
}

}  // namespace
