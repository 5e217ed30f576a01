// What the tests of the trace share: a clock that stands still, and so files with known names.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include <windows.h>
#include <share.h>

#include "integration/integration_test.h"

namespace support {

// Hooks that only these tests need.
KORVU_HOOK(GetCurrentProcessId)
KORVU_HOOK(GetCurrentThreadId)
KORVU_HOOK(_wfsopen)

// Its argument list is a pointer as it is passed; the real type has attributes that a template
// cannot bear.
struct ArgumentList {
  va_list list;
};
struct _vscwprintfName {
  static constexpr const char* kName = "_vscwprintf";
  using Pointer = std::remove_reference_t<decltype(*ArgumentList::list)>*;
  using Function = int (*)(const wchar_t*, Pointer);
};
using _vscwprintfHook = Hook<_vscwprintfName>;

class TraceTest : public IntegrationTest {
 protected:
  // Every trace starts at 09:05:17.042 on 7 March 2026 unless the test turns the clock.
  void SetUp() override;
  void TearDown() override;

  void TurnClockTo(const SYSTEMTIME& time);
  static SYSTEMTIME At(WORD hour, WORD minute);

  void SwitchOn() { library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose); }
  void SwitchOff() { library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff); }

  // The file of a trace that was switched on at this time, by this process.
  static std::wstring FileName(WORD hour = 9, WORD minute = 5);
  static std::string NarrowFileName(WORD hour = 9, WORD minute = 5);

  // The bytes of a file, while the library may have it open; nothing if there is none.
  static std::optional<std::string> Bytes(const std::wstring& name);
  // What this very thread, at this time, makes of a text in the file: the line end is written in
  // text mode.
  static std::string Line(const std::string& text, const std::string& time = "09:05:17.042");
  static std::string Opening(WORD hour = 9, WORD minute = 5);
  static std::string Closing(WORD hour = 9, WORD minute = 5);

  std::optional<TraceRecorder> debugger;
};

// At least so many digits.
std::string Padded(uint64_t number, size_t digits);

}  // namespace support
