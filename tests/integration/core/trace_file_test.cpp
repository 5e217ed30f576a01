// The trace file: its name, its lines, byte for byte.

#include "integration/core/trace_test.h"

using namespace support;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Optional;

namespace {

using TraceFile = TraceTest;

TEST_F(TraceFile, TheFirstLineNamesItAndTheLastSaysThatItIsClosed) {
  SwitchOn();
  library.KorvuISD_SetAPIVersion(4);
  SwitchOff();
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Line("Using API Version: 4.") + Closing()));
}

TEST_F(TraceFile, TheDebuggerGetsTheSameTextsWithoutTimeAndThread) {
  SwitchOn();
  library.KorvuISD_SetAPIVersion(4);
  SwitchOff();
  EXPECT_THAT(debugger->Lines(), ElementsAre(L"Sending trace to file " + FileName() + L"\r\n",
                                             L"Using API Version: 4.\r\n",
                                             L"Closing Logging to " + FileName() + L"\r\n"));
}

TEST_F(TraceFile, EachLineIsThereAsSoonAsItIsTraced) {
  SwitchOn();
  EXPECT_THAT(Bytes(FileName()), Optional(Opening()));
  library.KorvuISD_SetAPIVersion(4);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Line("Using API Version: 4.")));
}

TEST_F(TraceFile, EachLineBearsItsOwnTime) {
  SwitchOn();
  SYSTEMTIME time = At(23, 59);
  time.wSecond = 1;
  time.wMilliseconds = 999;
  TurnClockTo(time);
  library.KorvuISD_SetAPIVersion(4);
  time = At(0, 0);
  time.wSecond = 0;
  time.wMilliseconds = 7;
  TurnClockTo(time);
  library.KorvuISD_SetAPIVersion(5);
  EXPECT_THAT(Bytes(FileName()),
              Optional(Opening() + Line("Using API Version: 4.", "23:59:01.999") +
                       Line("Using API Version: 5.", "00:00:00.007")));
}

TEST_F(TraceFile, SwitchingOnTwiceInAMinuteAppends) {
  SwitchOn();
  SwitchOff();
  SwitchOn();
  SwitchOff();
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Closing() + Opening() + Closing()));
}

TEST_F(TraceFile, SwitchingOnInAnotherMinuteStartsAnotherFile) {
  SwitchOn();
  SwitchOff();
  TurnClockTo(At(9, 6));
  SwitchOn();
  SwitchOff();
  EXPECT_THAT(Bytes(FileName(9, 5)), Optional(Opening(9, 5) + Closing(9, 5)));
  EXPECT_THAT(Bytes(FileName(9, 6)), Optional(Opening(9, 6) + Closing(9, 6)));
}

TEST_F(TraceFile, AnotherLevelThatIsOnKeepsTheFileAndSaysNothing) {
  SwitchOn();
  TurnClockTo(At(9, 6));
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelError);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelInfo);
  TurnClockTo(At(9, 5));
  library.KorvuISD_SetAPIVersion(4);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Line("Using API Version: 4.")));
  EXPECT_THAT(Bytes(FileName(9, 6)), Optional(std::string()));
}

TEST_F(TraceFile, OutlivesTheClient) {
  ScriptedService service;
  SwitchOn();
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  library.KorvuISD_Shutdown();
  TurnClockTo(At(9, 6));
  library.KorvuISD_SetAPIVersion(4);
  SwitchOff();
  const auto bytes = Bytes(FileName());
  ASSERT_TRUE(bytes.has_value());
  EXPECT_THAT(*bytes, testing::StartsWith(Opening() + Line("Connecting...")));
  EXPECT_THAT(*bytes, EndsWith(Line("Using API Version: 4.", "09:06:17.042") +
                               Line("Closing Logging to " + NarrowFileName(), "09:06:17.042")));
  EXPECT_EQ(bytes->find("Sending trace", 100), std::string::npos);
}

TEST_F(TraceFile, HoldsTextInUtf8) {
  ScriptedService service;
  ConnectTo(service);
  SwitchOn();
  library.KorvuISD_SetOpaqueModeDisplayPath(L"Gr\u00f6\u00dfe \u6f22\u5b57 \U0001F600");
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  SwitchOff();
  EXPECT_THAT(Bytes(FileName()), Optional(testing::HasSubstr(
                                     "OpaqueDisplayPath\":\"Gr\xC3\xB6\xC3\x9F"
                                     "e \xE6\xBC\xA2\xE5\xAD\x97 \xF0\x9F\x98\x80\"}.\r\r\n")));
}

TEST_F(TraceFile, APathWithPercentSignsIsNoFormat) {
  ScriptedService service;
  ConnectTo(service);
  SwitchOn();
  library.KorvuISD_SetOpaqueModeDisplayPath(L"100% %s %n");
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  SwitchOff();
  EXPECT_THAT(Bytes(FileName()), Optional(testing::HasSubstr("\":\"100% %s %n\"}.\r\r\n")));
}

TEST_F(TraceFile, AVeryLongTextIsWhole) {
  ScriptedService service;
  ConnectTo(service);
  SwitchOn();
  const std::wstring path(100000, L'x');
  library.KorvuISD_SetOpaqueModeDisplayPath(path.c_str());
  service.WaitForRequests(ScriptedService::kBatchSize + 2);
  SwitchOff();
  EXPECT_THAT(Bytes(FileName()),
              Optional(testing::HasSubstr("\":\"" + std::string(100000, 'x') + "\"}.\r\r\n")));
}

// Numbers of processes and threads ---------------------------------------------------------------

struct Opened {
  std::wstring name;
  std::wstring mode;
  int share = 0;
};

class NumbersInTheTrace : public TraceTest {
 protected:
  // Traces as process `process` and thread `thread`, into a file of this process nevertheless.
  std::string Trace(DWORD process, DWORD thread) {
    GetCurrentProcessIdHook::Set(library, [=] { return process; });
    GetCurrentThreadIdHook::Set(library, [=] { return thread; });
    _wfsopenHook::Set(library, [&](const wchar_t* name, const wchar_t* mode, int share) {
      opened.push_back({name, mode, share});
      return _wfsopenHook::Real(FileName().c_str(), mode, share);
    });
    SwitchOn();
    SwitchOff();
    GetCurrentProcessIdHook::Clear();
    GetCurrentThreadIdHook::Clear();
    _wfsopenHook::Clear();
    return Bytes(FileName()).value_or("");
  }

  std::vector<Opened> opened;
};

TEST_F(NumbersInTheTrace, AreFilledUpToFiveDigitsInALineButNotInTheName) {
  const std::string name = R"(c:\Korvu\Korvu-03-07-2026-at-0905-isd-settingsapi-pid-4242.txt)";
  EXPECT_EQ(Trace(4242, 7312), "09:05:17.042 -- 04242/07312 -- Sending trace to file " + name +
                                   "\r\r\n"
                                   "09:05:17.042 -- 04242/07312 -- Closing Logging to " +
                                   name + "\r\r\n");
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0].name, std::wstring(name.begin(), name.end()));
}

TEST_F(NumbersInTheTrace, OfMoreThanFiveDigitsAreWrittenInFull) {
  const std::string name =
      R"(c:\Korvu\Korvu-03-07-2026-at-0905-isd-settingsapi-pid-4294967292.txt)";
  EXPECT_EQ(Trace(4294967292, 123456),
            "09:05:17.042 -- 4294967292/123456 -- Sending trace to file " + name +
                "\r\r\n"
                "09:05:17.042 -- 4294967292/123456 -- Closing Logging to " +
                name + "\r\r\n");
}

TEST_F(NumbersInTheTrace, OfOneDigitGetFourZeros) {
  EXPECT_THAT(Trace(8, 12345), testing::StartsWith("09:05:17.042 -- 00008/12345 -- "));
}

TEST_F(NumbersInTheTrace, TheFileIsOpenedToAppendTextAndToBeRead) {
  Trace(4242, 7312);
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0].mode, L"a");
  EXPECT_EQ(opened[0].share, _SH_DENYNO);
}

}  // namespace
