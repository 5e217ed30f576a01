#include "core/trace.h"

#include <share.h>
#include <windows.h>
#include <shlwapi.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "core/trace_line.h"
#include "platform/mutex.h"

namespace KorvuISD {

std::atomic<bool> traceEnabled{false};

namespace {

// Keeps lines whole, and the file's name and stream in step.
LeafMutex traceMutex;

// Neither is destroyed when the process exits: a thread that the exit cut short may hold their
// locks, and the system closes the file anyway.
std::wstring& traceFileName GUARDED_BY(traceMutex) = *new std::wstring;  // empty: tracing is off
std::FILE* traceFile GUARDED_BY(traceMutex) = nullptr;

// The line that is made next, for the sake of its memory. Null while a thread is making it.
TraceLine* spareLine GUARDED_BY(traceMutex) = nullptr;

TraceLine FormatLine(const wchar_t* format, ...) {
  TraceLine line;
  va_list arguments;
  va_start(arguments, format);
  line.Format(format, arguments);
  va_end(arguments);
  return line;
}

std::wstring NewTraceFileName() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return FormatLine(L"c:\\Korvu\\Korvu-%02d-%02d-%d-at-%02d%02d-isd-settingsapi-pid-%u.txt",
                    now.wMonth, now.wDay, now.wYear, now.wHour, now.wMinute,
                    static_cast<unsigned>(GetCurrentProcessId()))
      .Text();
}

void OpenTraceFile() REQUIRES(traceMutex) {
  traceFile = _wfsopen(traceFileName.c_str(), L"a", _SH_DENYNO);
}

void CloseTraceFile() REQUIRES(traceMutex) {
  if (traceFile) std::fclose(traceFile);
  traceFile = nullptr;
}

// A file that could not be opened is tried again with every line: the directory may appear.
void WriteLine(TraceLine& line) REQUIRES(traceMutex) {
  if (traceFileName.empty()) return;
  if (!traceFile) OpenTraceFile();
  if (!traceFile) return;
  const std::string_view bytes = line.Stamped();
  std::fwrite(bytes.data(), 1, bytes.size(), traceFile);
  std::fflush(traceFile);
}

void WriteText(TraceLine& line) REQUIRES(traceMutex) {
  if (line.IsEmpty()) return;
  OutputDebugStringW(line.Text());
  WriteLine(line);
}

void WriteText(TraceLine&& line) REQUIRES(traceMutex) {
  WriteText(line);
}

std::unique_ptr<TraceLine> TakeLine() {
  TraceLine* line = nullptr;
  {
    const MutexLock lock(traceMutex);
    line = std::exchange(spareLine, nullptr);
  }
  return line ? std::unique_ptr<TraceLine>(line) : std::make_unique<TraceLine>();
}

void KeepLine(std::unique_ptr<TraceLine> line) REQUIRES(traceMutex) {
  if (!spareLine) spareLine = line.release();
}

}  // namespace

void TraceWrite(const wchar_t* format, ...) {
  std::unique_ptr<TraceLine> line = TakeLine();
  va_list arguments;
  va_start(arguments, format);
  line->Format(format, arguments);
  va_end(arguments);
  const MutexLock lock(traceMutex);
  WriteText(*line);
  KeepLine(std::move(line));
}

void StartTracing() {
  if (!PathFileExistsW(L"c:\\korvu")) CreateDirectoryW(L"c:\\korvu", nullptr);
  // Under the lock as one step: no other thread's line may come before the opening one.
  const MutexLock lock(traceMutex);
  traceEnabled = true;
  if (!traceFile) {
    traceFileName = NewTraceFileName();
    OpenTraceFile();
  }
  WriteText(FormatLine(L"Sending trace to file %ws\r\n", traceFileName.c_str()));
}

void StopTracing() {
  // Under the lock as one step: no other thread's line may follow the closing one.
  const MutexLock lock(traceMutex);
  if (traceEnabled) {
    WriteText(FormatLine(L"Closing Logging to %ws\r\n", traceFileName.c_str()));
  }
  CloseTraceFile();
  traceFileName.clear();
  traceEnabled = false;
}

void ReleaseTrace() {
  const MutexLock lock(traceMutex);
  CloseTraceFile();
  delete &traceFileName;
  delete std::exchange(spareLine, nullptr);
}

}  // namespace KorvuISD
