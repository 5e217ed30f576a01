// Which log levels switch the trace on and off, and that it costs nothing while it is off.

#include <atomic>

#include "integration/core/trace_test.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

class TraceLevel : public TraceTest {
 protected:
  // As an application in another language passes it: any 32 bits.
  void SetLevel(int32_t level) {
    library.KorvuISD_SetLogLevel(static_cast<KorvuISD_LogLevel>(level));
  }
};

class LevelThatIsOn : public TraceLevel, public testing::WithParamInterface<int32_t> {};

TEST_P(LevelThatIsOn, SwitchesTheTraceOn) {
  SetLevel(GetParam());
  library.KorvuISD_SetAPIVersion(1);
  SetLevel(3);
  library.KorvuISD_SetAPIVersion(2);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Line("Using API Version: 1.") + Closing()));
}

TEST_P(LevelThatIsOn, IsNoNewsToATraceThatIsOn) {
  SetLevel(0);
  SetLevel(GetParam());
  library.KorvuISD_SetAPIVersion(1);
  SetLevel(GetParam());
  SetLevel(3);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Line("Using API Version: 1.") + Closing()));
}

INSTANTIATE_TEST_SUITE_P(Levels, LevelThatIsOn, testing::Values(0, 1, 2, 4, -1, 2147483647));

TEST_F(TraceLevel, OffWhileItIsOffDoesNothing) {
  const auto calls = std::make_shared<std::atomic<int>>(0);
  const auto count = [calls](auto...) { ++*calls; };
  PathFileExistsWHook::Set(library, [=](auto...) -> BOOL { return count(), FALSE; });
  CreateDirectoryWHook::Set(library, [=](auto...) -> BOOL { return count(), FALSE; });
  GetLocalTimeHook::Set(library, [=](auto...) { count(); });
  _wfsopenHook::Set(library, [=](auto...) -> std::FILE* { return count(), nullptr; });
  SetLevel(3);
  SetLevel(3);
  PathFileExistsWHook::Clear();
  CreateDirectoryWHook::Clear();
  _wfsopenHook::Clear();
  TurnClockTo(At(9, 5));
  EXPECT_EQ(*calls, 0);
  EXPECT_THAT(debugger->Lines(), IsEmpty());

  SetLevel(1);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening()));
}

TEST_F(TraceLevel, ASecondOffSaysNothingMore) {
  SetLevel(1);
  SetLevel(3);
  SetLevel(3);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Closing()));
  EXPECT_EQ(debugger->Lines().size(), 2u);
}

TEST_F(TraceLevel, WhileOffNothingIsFormattedTimedOrSent) {
  const auto calls = std::make_shared<std::atomic<int>>(0);
  GetLocalTimeHook::Set(library, [=](auto...) { ++*calls; });
  OutputDebugStringWHook::Set(library, [=](auto...) { ++*calls; });
  _vscwprintfHook::Set(library, [=](auto... arguments) {
    ++*calls;
    return _vscwprintfHook::Real(arguments...);
  });
  _wfsopenHook::Set(library, [=](auto...) -> std::FILE* { return ++*calls, nullptr; });

  ScriptedService service;
  ConnectTo(service);
  library.KorvuISD_SetTiltSensitivity(2, 0);
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  service.Announce(Key(115), L"3");
  EXPECT_TRUE(recorder.WaitForSlot(8, 1));
  library.KorvuISD_Shutdown();
  EXPECT_EQ(*calls, 0);

  // The same counters see a trace that is on.
  SetLevel(0);
  EXPECT_GE(*calls, 3);
  _wfsopenHook::Clear();
  _vscwprintfHook::Clear();
  OutputDebugStringWHook::Clear();
}

// A thread switches the trace on while another is about to replace the client.
TEST_F(TraceLevel, SwitchingOnWhileTheClientIsReplacedOpensTheFileOnce) {
  ScriptedService service;
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  CreateEventWHook::Set(library, [this](auto... arguments) {
    CreateEventWHook::Clear();
    SetLevel(1);
    return CreateEventWHook::Real(arguments...);
  });
  library.KorvuISD_Shutdown();
  TurnClockTo(At(9, 6));
  SetLevel(1);
  SetLevel(3);
  const auto bytes = Bytes(FileName());
  ASSERT_TRUE(bytes.has_value());
  EXPECT_THAT(*bytes, testing::StartsWith(Opening()));
  EXPECT_THAT(*bytes,
              testing::EndsWith(Line("Closing Logging to " + NarrowFileName(), "09:06:17.042")));
  EXPECT_EQ(bytes->find("Sending trace", 40), std::string::npos);
  EXPECT_THAT(Bytes(FileName(9, 6)), Optional(std::string()));
}

TEST_F(TraceLevel, IsSetByThreadsAndCallbacksAlike) {
  recorder.WhenCalled([this](const Call& call) {
    if (call.slot == 22) SetLevel(1);
  });
  Register(Context(1));
  recorder.WhenCalled({});
  EXPECT_THAT(Bytes(FileName()), Optional(Opening()));
}

}  // namespace
