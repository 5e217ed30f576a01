// The library's platform calls of a connection: recorded with what each is about, and replaceable
// one at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <vector>

#include <windows.h>

#include "support/import_hooks.h"
#include "support/wait.h"

namespace support {

enum class Function {
  kCreateEvent,
  kSetEvent,
  kResetEvent,
  kReadFile,
  kWriteFile,
  kCancelIo,
  kGetOverlappedResult,
  kWaitForOne,
  kWaitForAny,
};

// What a call is about, or what an open handle is. The two events that live as long as the client
// are known from the sync thread's first wait on.
enum class On {
  kShutdownEvent,
  kSendEvent,
  kReadEvent,      // of the announcements
  kExchangeEvent,  // of one request and its reply
  kSendOnlyPipe,
  kDuplexPipe,
  kSyncThreadWait,  // on three events at once
  kOther,
};
void PrintTo(On on, std::ostream* out);

struct PlatformCall {
  Function function;
  On on;
  DWORD amount;  // bytes to read or write, milliseconds to wait, whether to wait for a result
  DWORD result;  // as returned; of CreateEventW, whether there is an event
};

class PlatformCalls {
 public:
  // A call that is about to be made, for the action that takes its place.
  struct Intercepted {
    HANDLE handle;
    OVERLAPPED* overlapped;
    DWORD amount;
    DWORD* byteCount;             // where GetOverlappedResult puts it
    std::function<DWORD()> real;  // makes the call
  };
  // Returns the result; the last error that it leaves is the call's.
  using Action = std::function<DWORD(const Intercepted&)>;

  // To be made before the library connects. One at a time.
  explicit PlatformCalls(const Library& library);
  // All calls go through again.
  ~PlatformCalls();
  PlatformCalls(const PlatformCalls&) = delete;
  PlatformCalls& operator=(const PlatformCalls&) = delete;

  // From the sync thread's next such call on, `skip` of them pass and then one is `action` instead.
  // Calls on one thing are intercepted in the order in which this was called.
  void Intercept(Function function, On on, Action action, size_t skip = 0);

  // An action that does not make the call.
  static Action Answer(DWORD result, DWORD error);
  // An action for a read: it is over when the call returns, and its event is not signalled, so that
  // nobody but the library will. A piece that others follow fails with ERROR_MORE_DATA.
  static DWORD CompleteAtOnce(const Intercepted& call);

  // The call is not made, and answers that it failed with `error`.
  void Fail(Function function, On on, DWORD error, size_t skip = 0);

  // Until all that was to be intercepted has been. False if patience ran out.
  [[nodiscard]] bool WaitUntilIntercepted();

  // Calls of all threads that have returned, in that order.
  std::vector<PlatformCall> Calls(Function function, On on) const;
  [[nodiscard]] bool WaitForCall(Function function, On on, size_t count = 1);
  std::vector<PlatformCall> AllCalls() const;
  void Forget();

  // Until the sync thread's latest call has started a read of announcements. From then on the
  // thread hears of a loss by the end of this read, and not when it tries to start one.
  [[nodiscard]] bool WaitForStartedRead();

  // The open handle of that kind; null if there is none.
  HANDLE HandleOf(On on) const;

  // What the library has opened, but for what the C++ runtime opened for it, and not closed.
  std::map<On, size_t> OpenHandles() const;
  [[nodiscard]] bool WaitForOpenHandles(const std::map<On, size_t>& expected);

  // Sync threads that have been started and have not come to their end.
  size_t LiveThreads() const;
  // What the others returned.
  std::vector<DWORD> ThreadResults() const;
  [[nodiscard]] bool WaitForLiveThreads(size_t count);

  struct State;

 private:
  // The library's thread may be inside a hook when this object goes.
  std::shared_ptr<State> state;
};

}  // namespace support
