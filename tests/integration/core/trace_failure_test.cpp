// The trace when the directory or the file cannot be had: nobody is told, and nothing else changes.

#include "integration/core/trace_test.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

namespace {

class TraceFailure : public TraceTest {
 protected:
  void TearDown() override {
    PathFileExistsWHook::Clear();
    CreateDirectoryWHook::Clear();
    _wfsopenHook::Clear();
    _vscwprintfHook::Clear();
    TraceTest::TearDown();
  }

  // What the library asks about the directory. It sees it or not, and can make it or not.
  void HookDirectory(bool exists, bool canBeMade) {
    PathFileExistsWHook::Set(library, [=, this](const wchar_t* path) -> BOOL {
      asked.emplace_back(path);
      return exists;
    });
    CreateDirectoryWHook::Set(library, [=, this](const wchar_t* path, auto security) -> BOOL {
      made.emplace_back(path);
      EXPECT_EQ(security, nullptr);
      if (!canBeMade) SetLastError(ERROR_ACCESS_DENIED);
      return canBeMade;
    });
  }

  // The first `count` attempts to open the file fail.
  void RefuseFile(int count) {
    _wfsopenHook::Set(library, [=, this](const wchar_t* name, const wchar_t* mode, int share) {
      return ++attempts <= count ? nullptr : _wfsopenHook::Real(name, mode, share);
    });
  }

  std::vector<std::wstring> asked;
  std::vector<std::wstring> made;
  int attempts = 0;
};

TEST_F(TraceFailure, AMissingDirectoryIsMade) {
  HookDirectory(false, true);
  SwitchOn();
  EXPECT_THAT(asked, ElementsAre(L"c:\\korvu"));
  EXPECT_THAT(made, ElementsAre(L"c:\\korvu"));
}

TEST_F(TraceFailure, AnExistingDirectoryIsLeftAlone) {
  HookDirectory(true, true);
  SwitchOn();
  EXPECT_THAT(asked, ElementsAre(L"c:\\korvu"));
  EXPECT_THAT(made, IsEmpty());
}

TEST_F(TraceFailure, ADirectoryThatCannotBeMadeIsIgnored) {
  HookDirectory(false, false);
  SwitchOn();
  EXPECT_THAT(made, ElementsAre(L"c:\\korvu"));
  // In truth it is there, so the file is.
  EXPECT_THAT(Bytes(FileName()), Optional(Opening()));
}

TEST_F(TraceFailure, TheDirectoryIsLookedForOnlyWhenTracingIsSwitchedOn) {
  HookDirectory(true, true);
  SwitchOn();
  library.KorvuISD_SetAPIVersion(1);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelError);
  SwitchOff();
  EXPECT_EQ(asked.size(), 1u);
}

TEST_F(TraceFailure, AFileThatCannotBeOpenedIsTriedAgainWithEveryLine) {
  RefuseFile(4);
  SwitchOn();  // once when it is switched on, once for the line that says so
  EXPECT_EQ(attempts, 2);
  library.KorvuISD_SetAPIVersion(1);
  library.KorvuISD_SetAPIVersion(2);
  EXPECT_EQ(attempts, 4);
  EXPECT_THAT(Bytes(FileName()), Optional(std::string()));
  library.KorvuISD_SetAPIVersion(3);
  library.KorvuISD_SetAPIVersion(4);
  EXPECT_EQ(attempts, 5);
  EXPECT_THAT(Bytes(FileName()),
              Optional(Line("Using API Version: 3.") + Line("Using API Version: 4.")));
}

TEST_F(TraceFailure, TheLateFileHasTheNameOfTheTimeOfSwitchingOn) {
  RefuseFile(2);
  SwitchOn();
  TurnClockTo(At(9, 6));
  library.KorvuISD_SetAPIVersion(1);
  EXPECT_THAT(Bytes(FileName(9, 5)), Optional(Line("Using API Version: 1.", "09:06:17.042")));
  EXPECT_THAT(Bytes(FileName(9, 6)), Optional(std::string()));
}

TEST_F(TraceFailure, WithoutAFileTheDebuggerStillGetsEverything) {
  RefuseFile(1000);
  SwitchOn();
  library.KorvuISD_SetAPIVersion(1);
  SwitchOff();
  EXPECT_THAT(debugger->Lines(), ElementsAre(L"Sending trace to file " + FileName() + L"\r\n",
                                             L"Using API Version: 1.\r\n",
                                             L"Closing Logging to " + FileName() + L"\r\n"));
  EXPECT_THAT(Bytes(FileName()), Optional(std::string()));
}

TEST_F(TraceFailure, OnceOffAFileThatWasRefusedIsNotTriedAnyMore) {
  RefuseFile(1000);
  SwitchOn();
  SwitchOff();
  const int before = attempts;
  library.KorvuISD_SetAPIVersion(1);
  EXPECT_EQ(attempts, before);
}

TEST_F(TraceFailure, ATextThatCannotBeFormattedIsDropped) {
  SwitchOn();
  _vscwprintfHook::Set(library, [](auto...) { return -1; });
  library.KorvuISD_SetAPIVersion(1);
  _vscwprintfHook::Clear();
  library.KorvuISD_SetAPIVersion(2);
  EXPECT_THAT(Bytes(FileName()), Optional(Opening() + Line("Using API Version: 2.")));
  EXPECT_THAT(debugger->Lines(), ElementsAre(L"Sending trace to file " + FileName() + L"\r\n",
                                             L"Using API Version: 2.\r\n"));
}

}  // namespace
