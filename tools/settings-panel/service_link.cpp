#include "service_link.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "KorvuTabletSettingsAPI.h"
#include "callbacks.h"
#include "korvu/settings.hpp"
#include "model/letters.h"
#include "shared/keys.h"
#include "shared/start_thread.h"

namespace tool::panel {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kEndLimit = 500ms;
constexpr std::chrono::milliseconds kPauseAfterFailure = 1s;

// The connection and those who wait for it. Never destroyed: the threads that open and end the
// connection are left behind when the process ends.
struct OpenConnection {
  std::mutex mutex;
  std::condition_variable changed;
  std::optional<korvu::Connection> connection;
  bool isEnding = false;
  bool hasEnded = false;
};

OpenConnection& TheConnection() {
  static OpenConnection& connection = *new OpenConnection;
  return connection;
}

// What the window wants of the library. Never destroyed, for the same reason.
class Calls {
 public:
  void Add(std::function<void()> call) {
    const std::lock_guard lock(mutex);
    calls.push_back(std::move(call));
    hasCalls.notify_one();
  }

  [[noreturn]] void Run() {
    for (;;) Next()();
  }

 private:
  std::function<void()> Next() {
    std::unique_lock lock(mutex);
    hasCalls.wait(lock, [&] { return !calls.empty(); });
    std::function<void()> call = std::move(calls.front());
    calls.pop_front();
    return call;
  }

  std::mutex mutex;
  std::condition_variable hasCalls;
  std::deque<std::function<void()>> calls;
};

Calls& TheCalls() {
  static Calls& calls = *new Calls;
  return calls;
}

// Manual replies have a context of their own, so that the mailbox is where all threads find it.
Mailbox* g_mailbox = nullptr;

// Without end, looking each second. It fails while a service is half there.
void Connect() {
  OpenConnection& open = TheConnection();
  for (;;) {
    std::optional<korvu::Connection> connection =
        korvu::Connection::Open(std::chrono::milliseconds::max());
    if (connection) {
      const std::lock_guard lock(open.mutex);
      if (open.isEnding) return;
      open.connection = std::move(connection);
      g_mailbox->Put(Connected{});
      return;
    }
    std::this_thread::sleep_for(kPauseAfterFailure);
  }
}

void KORVUISD_CALL OnAnswer(void* context, const wchar_t* text, size_t* partLengths,
                            size_t) noexcept {
  // Without a request part the connection broke, or was opened anew; there will be an answer to the
  // next question.
  if (partLengths[0] == 0) return;
  g_mailbox->Put(Answer{reinterpret_cast<uintptr_t>(context),
                        std::wstring(text + partLengths[0], partLengths[1])});
}

// A probe's answer has a value; that of a value request may be empty, but names what was asked for.
void KORVUISD_CALL OnProbeAnswer(void*, const wchar_t*, size_t* partLengths, size_t) noexcept {
  g_mailbox->Put(SignOfLife{partLengths[1] != 0});
}
void KORVUISD_CALL OnLastValue(void*, const wchar_t*, size_t* partLengths, size_t) noexcept {
  g_mailbox->Put(SignOfLife{partLengths[0] != 0});
}

}  // namespace

ServiceLink::ServiceLink(Mailbox& mailbox) {
  g_mailbox = &mailbox;
  StartThread([&mailbox] {
    // It lasts as long as the process.
    static const korvu::Registration& registration =
        *new korvu::Registration(CallbacksInto(mailbox));
    static_cast<void>(registration);
    StartThread(Connect);
    TheCalls().Run();
  });
}

void ServiceLink::Do(std::function<void()> call) {
  TheCalls().Add(std::move(call));
}

void ServiceLink::Ask(size_t key) {
  Do([key] {
    KorvuISD_SendManual(tool::ValueRequest(key).c_str(), reinterpret_cast<void*>(key), OnAnswer);
  });
}

void ServiceLink::Ask(Presence::Question question) {
  switch (question) {
    case Presence::Question::kNone:
      return;
    case Presence::Question::kIsAlive:
      Do([] {
        KorvuISD_SendManual(std::wstring(tool::kConnectionProbe).c_str(), nullptr, OnProbeAnswer);
      });
      return;
    case Presence::Question::kAreValuesRead:
      // Not among the values that the library asks for by itself: so it waits behind all of those,
      // and none of them is answered in its place.
      Do([] {
        KorvuISD_SendManual(tool::ValueRequest(tool::kHoverClickUiKey).c_str(), nullptr,
                            OnLastValue);
      });
      return;
  }
}

void ServiceLink::End() {
  OpenConnection& open = TheConnection();
  std::unique_lock lock(open.mutex);
  open.isEnding = true;
  if (!open.connection) return;
  StartThread([&open] {
    std::optional<korvu::Connection> connection;
    {
      const std::lock_guard taking(open.mutex);
      connection = std::exchange(open.connection, {});
    }
    connection.reset();
    const std::lock_guard ended(open.mutex);
    open.hasEnded = true;
    open.changed.notify_all();
  });
  open.changed.wait_for(lock, kEndLimit, [&] { return open.hasEnded; });
}

}  // namespace tool::panel
