// The diagnostic trace: what the library does, line by line, for the debugger and for a file.
//
// It is process-wide: it outlives the client, and all threads write to it. Texts end in "\r\n"
// themselves; the file is in text mode, so there each line ends in "\r\r\n".
#pragma once

#include <atomic>

namespace KorvuISD {

extern std::atomic<bool> g_traceEnabled;

// Writes a text. Wide printf rules of the platform: %s and %ws take wide text, %hs narrow text, %d
// 32 bits. A text for which there is no memory is dropped, as one is that cannot be formatted.
// Cold, so that its calls stand out of the way of what runs without a trace.
[[gnu::cold]] void TraceWrite(const wchar_t* format, ...) noexcept;

// Traces if tracing is on; costs one test if it is off.
template <class... Arguments>
void Trace(const wchar_t* format, Arguments... arguments) {
  static_assert(
      ((std::is_same_v<Arguments, const wchar_t*> || std::is_same_v<Arguments, const char*> ||
        (std::is_integral_v<Arguments> && sizeof(Arguments) <= 4)) &&
       ...));
  if (g_traceEnabled.load(std::memory_order_relaxed)) [[unlikely]]
    TraceWrite(format, arguments...);
}

// Opens and closes the trace. Opening starts a file whose name tells the time of the opening. One
// at a time, but for a call that the debugger's handler makes on the same thread.
void StartTracing() noexcept;
void StopTracing() noexcept;

// Frees what tracing holds, when the library is unloaded and no thread is in it any more.
void ReleaseTrace();

}  // namespace KorvuISD
