// What KorvuISD_Shutdown forgets and what it keeps.

#include "integration/core/shutdown_test.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Shutdown = ShutdownTest;

TEST_F(Shutdown, TheServiceLosesItsClient) {
  ConnectTo(service);
  library.KorvuISD_Shutdown();
  service.WaitForDisconnect();
}

TEST_F(Shutdown, AfterwardsTheLibraryConnectsAgain) {
  ConnectTo(service);
  library.KorvuISD_Shutdown();
  ConnectAgain();
  EXPECT_EQ(service.ConnectionCount(), 2);
}

TEST_F(Shutdown, RegistrationsAreForgotten) {
  service.SetValue(Key(kTilt), L"4");
  ConnectTo(service);
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  library.KorvuISD_Shutdown();
  recorder.Forget();
  service.SetValue(Key(kTilt), L"5");
  ConnectAgain();
  EXPECT_THAT(recorder.Calls(), IsEmpty());
}

TEST_F(Shutdown, ValuesAreForgottenAndFiredAfresh) {
  service.SetValue(Key(kTilt), L"4");
  ConnectTo(service);
  library.KorvuISD_Shutdown();
  recorder.Forget();
  Register(Context(2));
  ConnectAgain();
  // The very value that the old client had.
  const auto calls = recorder.CallsOf(kTiltSlot);
  EXPECT_THAT(calls, ElementsAre(Call{kTiltSlot, Context(2), L"4"}));
}

TEST_F(Shutdown, WhatWaitedInTheQueueIsNotSent) {
  ConnectTo(service);
  service.OnRequest([](const std::wstring& text) -> std::optional<Reaction> {
    if (text == LR"({"first":"1"})") return Reaction::Hold(std::wstring(ScriptedService::kAck));
    return std::nullopt;
  });
  const auto ignore = [](void*, const wchar_t*, size_t*, size_t) {};
  library.SendManual(LR"({"first":"1"})", Context(1), ignore);
  for (int i = 0; i < 10; ++i) library.KorvuISD_SetTiltSensitivity(i, 0);
  service.WaitForHeld();
  // Signalled while the reply is withheld, so nothing more goes out after it.
  library.KorvuISD_Shutdown();
  EXPECT_EQ(service.Requests().size(), ScriptedService::kBatchSize + 1);

  ConnectAgain();
  library.KorvuISD_SetTipSensitivity(1, 0);
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  EXPECT_THAT(TextsAfterTheBatch(), ElementsAre(ScriptedService::SetMessage(Key(116), L"1"),
                                                ScriptedService::ValueRequest(Key(116))));
}

TEST_F(Shutdown, TheApiVersionIsKept) {
  ConnectTo(service);  // version 9
  library.KorvuISD_Shutdown();
  ConnectAgain();
  library.KorvuISD_SetOpaqueModeSetupSave(1, 0);  // needs 6
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  EXPECT_THAT(TextsAfterTheBatch(), ElementsAre(ScriptedService::SetMessage(Key(129), L"1"),
                                                ScriptedService::ValueRequest(Key(129))));
}

TEST_F(Shutdown, TheLogLevelIsKept) {
  TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelInfo);
  const std::wstring opening = trace.Lines().at(0);
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  library.KorvuISD_Shutdown();
  trace.Forget();
  library.KorvuISD_SetAPIVersion(1);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);  // on already: not opened again
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
  const auto lines = trace.Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], L"Using API Version: 1.\r\n");
  EXPECT_EQ(lines[1], L"Closing Logging to " + opening.substr(opening.find(L"c:")));
}

TEST_F(Shutdown, ALogLevelOfOffIsKeptToo) {
  TraceRecorder trace(library);
  ConnectTo(service);
  library.KorvuISD_Shutdown();
  ConnectAgain();
  EXPECT_THAT(trace.Lines(), IsEmpty());
}

}  // namespace
