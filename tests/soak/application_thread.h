// One thread of an application: it alone sets its wedge of the radial menu, to ever higher codes,
// and now and then asks what the service has stored, or captures keystrokes.
//
// Between two questions it has few messages on their way, so that queues stay short. A code that
// the service has acknowledged must be in every later answer, or a higher one: that is what nothing
// lost means, and that answers never fall is what order means.
#pragma once

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <random>
#include <string>
#include <thread>

#include "soak/findings.h"
#include "support/library.h"

namespace soak {

struct Counts {
  std::atomic<int64_t> set{0};           // by the setter
  std::atomic<int64_t> asked{0};         // set by manual request
  std::atomic<int64_t> acknowledged{0};  // of those
  std::atomic<int64_t> questions{0};
  std::atomic<int64_t> answers{0};  // with a value
  std::atomic<int64_t> empty{0};    // answers to either that the connection was lost for
  std::atomic<int64_t> captures{0};
};

class ApplicationThread {
 public:
  ApplicationThread(const support::Library& library, size_t wedge, uint32_t seed,
                    Findings& findings, Counts& counts);
  ~ApplicationThread();
  ApplicationThread(const ApplicationThread&) = delete;
  ApplicationThread& operator=(const ApplicationThread&) = delete;

  void Pause();   // returns when nothing is on its way
  void Resume();  // from the beginning on it is paused
  // While paused, with a service that behaves: sets one more code and returns when the service has
  // it. Returns that code.
  int32_t SettleOn();

 private:
  enum class Purpose { kSet, kQuestion };
  // A manual request on its way; its address is the context.
  struct Request {
    ApplicationThread* thread = nullptr;
    Purpose purpose = Purpose::kSet;
    int32_t code = 0;        // that it sets; of a question, the highest acknowledged before
    bool isPending = false;  // guarded by the thread's mutex, as all of it
  };

  static void KORVUISD_CALL OnReply(void* context, const wchar_t* text, size_t* partLengths,
                                    size_t partCount);
  void Main();
  void DoSomething();
  void Set();
  void SetByRequest();
  int32_t Ask();  // -1 if the connection was lost
  void Capture();
  void Send(Purpose purpose, const std::wstring& message, int32_t code);
  void Answer(Request& request, const std::wstring& value);
  void AwaitAllAnswers();
  void Complain(const std::string& what) const;

  const support::Library& library;
  const size_t wedge;
  const std::wstring key;
  Findings& findings;
  Counts& counts;
  std::mt19937 random;
  int32_t nextCode;

  std::mutex mutex;
  std::condition_variable changed;
  std::array<Request, 64> requests;
  size_t pendingCount = 0;
  int32_t acknowledged = 0;  // the highest code
  int32_t lastAnswer = -1;   // to a question, -1 for none
  int32_t highestAnswer = 0;
  bool isPaused = true;
  bool isIdle = false;
  bool isEnding = false;
  std::thread thread;  // the last, since it uses all of the above
};

}  // namespace soak
