// What happens in a life, as the log tells it and the checkers hear it.
#pragma once

#include <cstdint>
#include <string_view>

#include "simulation/thread.h"

namespace simulation {

enum class Event {
  kCall,          // an application's call begins: its number, what (see Verb), its value
  kReturn,        // the same call has returned: its number, what, its result
  kCallback,      // number of the context, setting; the text is the value
  kManualAnswer,  // number of the request, length of the reply part
  kThreadStart,   // of the library
  kThreadEnd,     // of the library
  kLockTaken,     // number of the lock; 0 is the library's great one
  kLockFreed,     // number of the lock
  kWait,          // may wait so many milliseconds, -1 without limit; for which Wait
  kOpened,        // a pipe of the library: its handle, which Pipe, its connection
  kReads,         // the library reads from the pipe of this handle
  kClosed,        // a handle of the library; 1 if an operation on it runs
  kSignals,       // the library sets the event of this handle
  kWaitsFor,      // a thread of the library waits for this handle before any other
  kRefused,       // a call of the platform has failed on purpose; the text names it
  kAccepted,      // the service has a client: connection, which Pipe
  kRequest,       // a request has come: connection; its text
  kReply,         // the service has replied: connection; the text of its request and the reply
  kAnnounced,     // connection, setting; the text is the value
  kParted,        // connection, which Pipe: the service has closed its end
  kQuiet,         // no more faults
  kOverdue,       // a thread, by its number, has not returned from a call in all the time there was
  kHeld,          // setting; the text is the value that the service holds
  kRest,          // all must have come to rest
  kShutdownDone,  // the last shutdown has returned
  kUnloaded,      // the library is gone
};

enum class Pipe { kSendOnly, kDuplex };
enum class Wait { kObjects, kPipe, kSleep };

struct Happening {
  Event event;
  const Thread* thread;
  int64_t a = 0;
  int64_t b = 0;
  int64_t c = 0;
  std::wstring_view text{};
};

}  // namespace simulation
