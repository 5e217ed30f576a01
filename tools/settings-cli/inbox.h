// Where other threads leave word for the main thread, which alone acts and prints.
//
// The library's thread holds the library's lock while it calls back, and Ctrl+C comes on a thread
// of the system's. So both only drop a letter here, which never takes longer than a copy.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <variant>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/events.h"

namespace tool::cli {

using Clock = std::chrono::steady_clock;

// The reply to a manual request.
struct Answer {
  uint64_t request = 0;
  std::wstring requestPart;
  std::wstring value;
};

struct ConnectEnded {
  KorvuISD_Error result;
};

struct ShutdownEnded {};

struct EnterPressed {};

using Letter = std::variant<Event, Answer, ConnectEnded, ShutdownEnded, EnterPressed>;

enum class Wake { kLetter, kDeadline, kInterrupt };

struct Delivery {
  Wake wake;
  Letter letter;  // with kLetter only
};

class Inbox {
 public:
  void Put(Letter letter);
  void Interrupt();

  // The oldest letter, when there is one. An interruption comes first and stays until it is
  // forgotten.
  Delivery Take(Clock::time_point deadline);

  // For work that has to be done after Ctrl+C.
  void ForgetInterrupt();

 private:
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<Letter> letters;
  bool isInterrupted = false;
};

// The one of this process. It is never destroyed: threads that nobody waits for use it until the
// process ends.
Inbox& TheInbox();

}  // namespace tool::cli
