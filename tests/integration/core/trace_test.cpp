#include "integration/core/trace_test.h"

namespace support {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

}  // namespace

std::string Padded(uint64_t number, size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(text.size() < digits ? digits - text.size() : 0, '0') + text;
}

void TraceTest::SetUp() {
  debugger.emplace(library);
  TurnClockTo(At(9, 5));
  // An earlier process may have had our number, and the same names.
  CreateDirectoryW(L"c:\\korvu", nullptr);
  for (const WORD minute : {WORD{5}, WORD{6}}) {
    const File emptied(_wfsopen(FileName(9, minute).c_str(), L"wb", _SH_DENYNO));
  }
}

void TraceTest::TearDown() {
  GetLocalTimeHook::Clear();
  debugger.reset();
}

void TraceTest::TurnClockTo(const SYSTEMTIME& time) {
  GetLocalTimeHook::Set(library, [time](SYSTEMTIME* now) { *now = time; });
}

SYSTEMTIME TraceTest::At(WORD hour, WORD minute) {
  SYSTEMTIME time{};
  time.wYear = 2026;
  time.wMonth = 3;
  time.wDay = 7;
  time.wDayOfWeek = 6;
  time.wHour = hour;
  time.wMinute = minute;
  time.wSecond = 17;
  time.wMilliseconds = 42;
  return time;
}

std::string TraceTest::NarrowFileName(WORD hour, WORD minute) {
  return R"(c:\Korvu\Korvu-03-07-2026-at-)" + Padded(hour, 2) + Padded(minute, 2) +
         "-isd-settingsapi-pid-" + std::to_string(GetCurrentProcessId()) + ".txt";
}

std::wstring TraceTest::FileName(WORD hour, WORD minute) {
  const std::string name = NarrowFileName(hour, minute);
  return std::wstring(name.begin(), name.end());
}

std::optional<std::string> TraceTest::Bytes(const std::wstring& name) {
  const File file(_wfsopen(name.c_str(), L"rb", _SH_DENYNO));
  if (!file) return std::nullopt;
  std::string bytes;
  std::array<char, 65536> piece;
  while (const size_t count = std::fread(piece.data(), 1, piece.size(), file.get())) {
    bytes.append(piece.data(), count);
  }
  return bytes;
}

std::string TraceTest::Line(const std::string& text, const std::string& time) {
  return time + " -- " + Padded(GetCurrentProcessId(), 5) + "/" + Padded(GetCurrentThreadId(), 5) +
         " -- " + text + "\r\r\n";
}

std::string TraceTest::Opening(WORD hour, WORD minute) {
  return Line("Sending trace to file " + NarrowFileName(hour, minute),
              Padded(hour, 2) + ":" + Padded(minute, 2) + ":17.042");
}

std::string TraceTest::Closing(WORD hour, WORD minute) {
  return Line("Closing Logging to " + NarrowFileName(hour, minute),
              Padded(hour, 2) + ":" + Padded(minute, 2) + ":17.042");
}

}  // namespace support
