#include "core/trace.h"

#include <share.h>
#include <windows.h>
#include <shlwapi.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string>

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

// The C runtime's own wide formatter, under the names that the toolchain does not replace by a
// standard one: only it reads %s as wide text. Empty if the runtime refuses the format.
std::wstring Format(const wchar_t* format, va_list arguments) {
  va_list measured;
  va_copy(measured, arguments);
  const int length = _vscwprintf(format, measured);
  va_end(measured);
  if (length < 0) return {};
  std::wstring text(static_cast<size_t>(length), L'\0');
  // Exactly as many characters as were counted; the string has the place for the terminator.
  _vsnwprintf(text.data(), text.size() + 1, format, arguments);
  return text;
}

std::wstring FormatText(const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::wstring text = Format(format, arguments);
  va_end(arguments);
  return text;
}

std::string ToUtf8(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

std::wstring NewTraceFileName() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return FormatText(L"c:\\Korvu\\Korvu-%02d-%02d-%d-at-%02d%02d-isd-settingsapi-pid-%u.txt",
                    now.wMonth, now.wDay, now.wYear, now.wHour, now.wMinute,
                    static_cast<unsigned>(GetCurrentProcessId()));
}

void OpenTraceFile() REQUIRES(traceMutex) {
  traceFile = _wfsopen(traceFileName.c_str(), L"a", _SH_DENYNO);
}

void CloseTraceFile() REQUIRES(traceMutex) {
  if (traceFile) std::fclose(traceFile);
  traceFile = nullptr;
}

// A file that could not be opened is tried again with every line: the directory may appear.
void WriteLine(const std::wstring& text) REQUIRES(traceMutex) {
  if (traceFileName.empty()) return;
  if (!traceFile) OpenTraceFile();
  if (!traceFile) return;
  SYSTEMTIME now;
  GetLocalTime(&now);
  const std::string line = ToUtf8(FormatText(L"%02d:%02d:%02d.%03d -- %05u/%05u -- ", now.wHour,
                                             now.wMinute, now.wSecond, now.wMilliseconds,
                                             static_cast<unsigned>(GetCurrentProcessId()),
                                             static_cast<unsigned>(GetCurrentThreadId())) +
                                  text);
  std::fwrite(line.data(), 1, line.size(), traceFile);
  std::fflush(traceFile);
}

void WriteText(const std::wstring& text) REQUIRES(traceMutex) {
  OutputDebugStringW(text.c_str());
  WriteLine(text);
}

}  // namespace

void TraceWrite(const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::wstring text = Format(format, arguments);
  va_end(arguments);
  if (text.empty()) return;
  const MutexLock lock(traceMutex);
  WriteText(text);
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
  WriteText(FormatText(L"Sending trace to file %ws\r\n", traceFileName.c_str()));
}

void StopTracing() {
  // Under the lock as one step: no other thread's line may follow the closing one.
  const MutexLock lock(traceMutex);
  if (traceEnabled) {
    WriteText(FormatText(L"Closing Logging to %ws\r\n", traceFileName.c_str()));
  }
  CloseTraceFile();
  traceFileName.clear();
  traceEnabled = false;
}

void ReleaseTrace() {
  const MutexLock lock(traceMutex);
  CloseTraceFile();
  delete &traceFileName;
}

}  // namespace KorvuISD
