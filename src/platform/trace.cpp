#include "platform/trace.h"

#include <cstdarg>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include <windows.h>
#include <share.h>
#include <shlwapi.h>

#include "platform/mutex.h"
#include "platform/thread_annotations.h"
#include "platform/trace_line.h"

namespace KorvuISD {

std::atomic<bool> g_traceEnabled{false};

namespace {

// Keeps the file's lines whole, and its name and stream in step. Who holds it may wait for the
// file, and for nothing else: the debugger gets its lines without it. To a process that is not
// debugged, such a line is an exception, and a handler of the application may take it up and call
// an export.
LeafMutex g_traceMutex;

// Neither is destroyed when the process exits: a thread that the exit cut short may hold their
// locks, and the system closes the file anyway.
std::wstring& g_traceFileName GUARDED_BY(g_traceMutex) =
    *new std::wstring;  // empty: tracing is off
std::FILE* g_traceFile GUARDED_BY(g_traceMutex) = nullptr;

// The line that is made next, for the sake of its memory. Null while a thread is making it.
TraceLine* g_spareLine GUARDED_BY(g_traceMutex) = nullptr;

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

void OpenTraceFile() REQUIRES(g_traceMutex) {
  g_traceFile = _wfsopen(g_traceFileName.c_str(), L"a", _SH_DENYNO);
}

void CloseTraceFile() REQUIRES(g_traceMutex) {
  if (g_traceFile) std::fclose(g_traceFile);
  g_traceFile = nullptr;
}

// A file that could not be opened is tried again with every line: the directory may appear. A line
// for which there is no memory is lost: what is traced goes on, as it does when nothing is.
void WriteLine(TraceLine& line) noexcept REQUIRES(g_traceMutex) {
  if (line.IsEmpty() || g_traceFileName.empty()) return;
  if (!g_traceFile) OpenTraceFile();
  if (!g_traceFile) return;
  try {
    const std::string_view bytes = line.Stamped();
    std::fwrite(bytes.data(), 1, bytes.size(), g_traceFile);
    std::fflush(g_traceFile);
  } catch (const std::bad_alloc&) {
  }
}

void ToDebugger(const TraceLine& line) {
  if (!line.IsEmpty()) OutputDebugStringW(line.Text());
}

std::unique_ptr<TraceLine> TakeLine() {
  TraceLine* line = nullptr;
  {
    const MutexLock lock(g_traceMutex);
    line = std::exchange(g_spareLine, nullptr);
  }
  return line ? std::unique_ptr<TraceLine>(line) : std::make_unique<TraceLine>();
}

void KeepLine(std::unique_ptr<TraceLine> line) REQUIRES(g_traceMutex) {
  if (!g_spareLine) g_spareLine = line.release();
}

}  // namespace

void TraceWrite(const wchar_t* format, ...) noexcept {
  va_list arguments;
  va_start(arguments, format);
  try {
    std::unique_ptr<TraceLine> line = TakeLine();
    line->Format(format, arguments);
    ToDebugger(*line);
    const MutexLock lock(g_traceMutex);
    WriteLine(*line);
    KeepLine(std::move(line));
  } catch (const std::bad_alloc&) {
  }
  va_end(arguments);
}

void StartTracing() noexcept {
  if (!PathFileExistsW(L"c:\\korvu")) CreateDirectoryW(L"c:\\korvu", nullptr);
  std::wstring name;
  TraceLine opening;
  try {
    name = NewTraceFileName();
    opening = FormatLine(L"Sending trace to file %ws\r\n", name.c_str());
  } catch (const std::bad_alloc&) {
    name.clear();  // the trace does without a file, as if it could not be opened
  }
  {
    // Under the lock as one step: no other thread's line may come before the opening one. The
    // debugger comes afterwards, when tracing is on for good: its handler may switch it off again.
    const MutexLock lock(g_traceMutex);
    g_traceFileName.swap(name);
    if (!g_traceFileName.empty()) OpenTraceFile();
    g_traceEnabled = true;
    WriteLine(opening);
  }
  ToDebugger(opening);
}

void StopTracing() noexcept {
  TraceLine closing;
  {
    // Under the lock as one step: no other thread's line may follow the closing one.
    const MutexLock lock(g_traceMutex);
    try {
      closing = FormatLine(L"Closing Logging to %ws\r\n", g_traceFileName.c_str());
    } catch (const std::bad_alloc&) {
    }
    WriteLine(closing);
    CloseTraceFile();
    g_traceFileName.clear();
    g_traceEnabled = false;
  }
  ToDebugger(closing);
}

void ReleaseTrace() {
  const MutexLock lock(g_traceMutex);
  CloseTraceFile();
  delete &g_traceFileName;
  delete std::exchange(g_spareLine, nullptr);
}

}  // namespace KorvuISD
