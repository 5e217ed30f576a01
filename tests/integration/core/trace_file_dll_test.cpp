// The trace file as the system sees it: a real directory, the real time, and a lock on the file.

#include <shlwapi.h>

#include "integration/core/trace_test.h"

using namespace support;

namespace {

class TraceFileInTheSystem : public TraceTest {};

TEST_F(TraceFileInTheSystem, ItsDirectoryIsThere) {
  SwitchOn();
  EXPECT_TRUE(PathIsDirectoryW(L"c:\\korvu"));
  EXPECT_TRUE(PathFileExistsW(FileName().c_str()));
}

TEST_F(TraceFileInTheSystem, IsHeldWhileTracingIsOnAndFreeAfterwards) {
  SwitchOn();
  EXPECT_FALSE(DeleteFileW(FileName().c_str()));
  SwitchOff();
  EXPECT_TRUE(DeleteFileW(FileName().c_str()));
}

TEST_F(TraceFileInTheSystem, IsFreeOnceTheLibraryIsUnloaded) {
  SwitchOn();
  debugger.reset();
  GetLocalTimeHook::Clear();
  library.Unload();
  EXPECT_TRUE(DeleteFileW(FileName().c_str()));
}

TEST_F(TraceFileInTheSystem, IsNamedAfterTheLocalTime) {
  GetLocalTimeHook::Clear();
  SYSTEMTIME before{};
  SYSTEMTIME after{};
  GetLocalTime(&before);
  SwitchOn();
  GetLocalTime(&after);
  const auto nameAt = [](const SYSTEMTIME& time) {
    const std::string name =
        R"(c:\Korvu\Korvu-)" + Padded(time.wMonth, 2) + "-" + Padded(time.wDay, 2) + "-" +
        std::to_string(time.wYear) + "-at-" + Padded(time.wHour, 2) + Padded(time.wMinute, 2) +
        "-isd-settingsapi-pid-" + std::to_string(GetCurrentProcessId()) + ".txt";
    return std::wstring(name.begin(), name.end());
  };
  const auto lines = debugger->Lines();
  ASSERT_EQ(lines.size(), 1u);
  // The minute may end in between.
  EXPECT_THAT(lines[0], testing::AnyOf(L"Sending trace to file " + nameAt(before) + L"\r\n",
                                       L"Sending trace to file " + nameAt(after) + L"\r\n"));
  const std::wstring name = lines[0].substr(22, lines[0].size() - 24);
  EXPECT_TRUE(PathFileExistsW(name.c_str()));
}

}  // namespace
