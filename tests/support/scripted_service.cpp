#include "support/scripted_service.h"

#include <array>
#include <atomic>
#include <deque>
#include <list>
#include <stdexcept>
#include <thread>
#include <utility>

#include "support/pipe_instance.h"
#include "support/session.h"

namespace support {
namespace {

// Threads that each end when their own stop event is set.
class Workers {
 public:
  struct Worker {
    Event stop;
    std::atomic<bool> ended{false};
    std::thread thread;
  };

  template <class Work>
  void Start(Work work) {
    Sweep();
    Worker& worker = workers.emplace_back();
    worker.thread = std::thread([&worker, work = std::move(work)]() mutable {
      work(worker.stop);
      worker.ended = true;
    });
  }

  void SignalStop() {
    for (Worker& worker : workers) worker.stop.Set();
  }

  void Stop() {
    SignalStop();
    for (Worker& worker : workers) worker.thread.join();
    workers.clear();
  }

 private:
  void Sweep() {
    for (Worker& worker : workers) {
      if (worker.ended) worker.thread.join();
    }
    workers.remove_if([](const Worker& worker) { return !worker.thread.joinable(); });
  }

  std::list<Worker> workers;
};

}  // namespace

// A listener thread and the sessions of its clients, for each of the two pipes.
class ScriptedService::Impl {
 public:
  explicit Impl(PipeOffer offer) { Open(offer); }
  ~Impl() { Close(); }

  void Open(PipeOffer next) {
    offer = next;
    const std::wstring session = std::to_wstring(CurrentSession());
    // The send-only pipe last: it is the one that clients wait for.
    if (offer.duplex) {
      Listen(
          duplex, L"\\\\.\\pipe\\KorvuSettingsSyncher_" + session,
          [this](PipeInstance& pipe, Event& stop, int number) { Answering(pipe, stop, number); });
    }
    if (offer.sendOnly) {
      Listen(
          sendOnly, L"\\\\.\\pipe\\KorvuSettingsSyncherSendOnly_" + session,
          [this](PipeInstance& pipe, Event& stop, int number) { Announcing(pipe, stop, number); });
    }
  }

  void Close() {
    for (Side* side : {&sendOnly, &duplex}) {
      side->listener.Stop();
      BreakSessions(*side);
    }
  }

  struct Side {
    Workers listener;
    std::mutex sessionsMutex;
    Workers sessions;
    Event sessionEnded;
    // Sessions so far. Their threads may begin in another order than their clients came in.
    std::atomic<int> accepted = 0;
  };

  // The library opens the send-only pipe first. Its session may begin long after all of the batch
  // has been answered on the other: what has not begun cannot be broken, and the library would
  // notice nothing.
  void WaitForSendOnlySessions() {
    WaitUntilOrFail("the send-only pipe's session did not begin",
                    [&] { return sendOnly.accepted >= duplex.accepted; });
  }

  void BreakSessions(Side& side) {
    const std::lock_guard lock(side.sessionsMutex);
    side.sessions.Stop();
  }

  // As one step, so that the sessions of a client that comes back at once are not broken too.
  void BreakBothSessions() {
    const std::scoped_lock lock(sendOnly.sessionsMutex, duplex.sessionsMutex);
    sendOnly.sessions.SignalStop();
    duplex.sessions.SignalStop();
    sendOnly.sessions.Stop();
    duplex.sessions.Stop();
  }

  template <class Handler>
  void Listen(Side& side, const std::wstring& name, Handler handler) {
    // The first instance exists when this returns, so that a client finds the pipe.
    auto first = std::make_shared<PipeInstance>(name, offer);
    side.listener.Start([this, &side, name, handler, first](Event& stop) mutable {
      std::shared_ptr<PipeInstance> next = std::move(first);
      while (next->Accept(stop)) {
        std::shared_ptr<PipeInstance> connected = std::move(next);
        // Another instance before the client is served, so that a reconnection never finds none.
        if (!offer.singleInstance) next = std::make_shared<PipeInstance>(name, offer);
        side.sessionEnded.Clear();
        StartSession(side, handler, connected);
        if (offer.singleInstance) {
          const std::array<HANDLE, 2> events = {stop.Get(), side.sessionEnded.Get()};
          if (WaitForMultipleObjects(2, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0) return;
          // The same instance again: the pipe never vanishes, it is only busy.
          next = std::move(connected);
        }
      }
    });
  }

  template <class Handler>
  void StartSession(Side& side, Handler handler, std::shared_ptr<PipeInstance> pipe) {
    const std::lock_guard lock(side.sessionsMutex);
    const int number = ++side.accepted;
    side.sessions.Start(
        [this, &side, handler, pipe = std::move(pipe), number](Event& stop) mutable {
          Count(+1);
          handler(*pipe, stop, number);
          pipe->Disconnect();
          pipe.reset();
          side.sessionEnded.Set();
          Count(-1);
        });
  }

  void Count(int change) {
    {
      const std::lock_guard lock(mutex);
      openSessions += change;
    }
    changed.notify_all();
  }

  // The duplex pipe
  // ---------------------------------------------------------------------------------

  void Answering(PipeInstance& pipe, Event& stop, int connection) {
    {
      const std::lock_guard lock(mutex);
      ++connections;
      repliesOnConnection = 0;
    }
    changed.notify_all();
    while (const auto message = pipe.Read(stop)) {
      const Reaction reaction = Note(*message, pipe.ByteCount(), connection);
      if (!Act(pipe, stop, reaction)) return;
      {
        const std::lock_guard lock(mutex);
        ++repliesOnConnection;
      }
      changed.notify_all();
    }
  }

  Reaction Note(const std::wstring& text, size_t byteCount, int connection) {
    Script current;
    {
      const std::lock_guard lock(mutex);
      requests.push_back({text, byteCount, connection, Clock::now()});
      current = script;
    }
    changed.notify_all();
    if (current) {
      if (const auto reaction = current(text)) return *reaction;
    }
    return Reaction::Reply(UsualReply(text));
  }

  std::wstring UsualReply(const std::wstring& text) {
    const std::wstring open = L"{\"GetVal\":\"";
    if (!text.starts_with(open)) return std::wstring(kAck);
    const std::wstring key = text.substr(open.size(), text.size() - open.size() - 2);
    const std::lock_guard lock(mutex);
    const auto value = values.find(key);
    return ValueReply(value == values.end() ? L"" : value->second);
  }

  bool Act(PipeInstance& pipe, Event& stop, const Reaction& reaction) {
    if (reaction.delay.count() > 0) {
      const auto delayMs = static_cast<DWORD>(reaction.delay.count());
      if (WaitForSingleObject(stop.Get(), delayMs) == WAIT_OBJECT_0) return false;
    }
    switch (reaction.kind) {
      case Reaction::Kind::kReply:
        return Reply(pipe, stop, reaction);
      case Reaction::Kind::kNone:
        return true;
      case Reaction::Kind::kBreak:
        return false;
      case Reaction::Kind::kHold:
        return Hold(stop) && pipe.Write(reaction.reply, stop);
    }
    return false;
  }

  static bool Reply(PipeInstance& pipe, Event& stop, const Reaction& reaction) {
    if (!pipe.Write(reaction.reply, stop)) return false;
    for (const std::wstring& message : reaction.further) {
      if (!pipe.Write(message, stop)) return false;
    }
    if (!reaction.stalls) return true;
    WaitForSingleObject(stop.Get(), INFINITE);
    return false;
  }

  bool Hold(Event& stop) {
    {
      const std::lock_guard lock(mutex);
      ++held;
      release.Clear();
    }
    changed.notify_all();
    const std::array<HANDLE, 2> events = {stop.Get(), release.Get()};
    const bool released =
        WaitForMultipleObjects(2, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0 + 1;
    {
      const std::lock_guard lock(mutex);
      --held;
    }
    changed.notify_all();
    return released;
  }

  // The send-only pipe
  // ------------------------------------------------------------------------------

  void Announcing(PipeInstance& pipe, Event& stop, int session) {
    // A client may keep an older connection open; it gets nothing any more.
    Event never;
    const auto isLatest = [&] { return session == sendOnly.accepted; };
    while (pipe.WaitFor(isLatest() ? wake : never, stop)) {
      std::wstring message;
      {
        const std::lock_guard lock(mutex);
        if (!isLatest()) continue;
        if (announcements.empty()) {
          wake.Clear();
          continue;
        }
        message = std::move(announcements.front());
        announcements.pop_front();
        writing = true;
      }
      const bool written = pipe.Write(message, stop);
      {
        const std::lock_guard lock(mutex);
        writing = false;
      }
      changed.notify_all();
      if (!written) return;
    }
  }

  void Announce(std::wstring message) {
    const std::lock_guard lock(mutex);
    announcements.push_back(std::move(message));
    wake.Set();
  }

  template <class Condition>
  void WaitUntilOrFail(const char* what, Condition condition) {
    std::unique_lock lock(mutex);
    if (!WaitUntil(lock, changed, condition)) throw std::runtime_error(what);
  }

  PipeOffer offer;
  Side sendOnly;
  Side duplex;
  Event wake;
  Event release;

  mutable std::mutex mutex;
  std::condition_variable changed;
  Script script;
  std::map<std::wstring, std::wstring> values;
  std::vector<Request> requests;
  std::deque<std::wstring> announcements;
  bool writing = false;
  size_t held = 0;
  int connections = 0;
  size_t repliesOnConnection = 0;
  int openSessions = 0;
};

std::wstring ScriptedService::ValueReply(std::wstring_view value) {
  return L"{\"Val\":\"" + std::wstring(value) + L"\"}";
}

std::wstring ScriptedService::ValueRequest(std::wstring_view key) {
  return L"{\"GetVal\":\"" + std::wstring(key) + L"\"}";
}

std::wstring ScriptedService::SetMessage(std::wstring_view key, std::wstring_view value) {
  return L"{\"" + std::wstring(key) + L"\":\"" + std::wstring(value) + L"\"}";
}

ScriptedService::ScriptedService(PipeOffer offer) : impl(std::make_unique<Impl>(offer)) {}

ScriptedService::~ScriptedService() = default;

void ScriptedService::OnRequest(Script script) {
  const std::lock_guard lock(impl->mutex);
  impl->script = std::move(script);
}

void ScriptedService::SetValue(std::wstring key, std::wstring value) {
  const std::lock_guard lock(impl->mutex);
  impl->values[std::move(key)] = std::move(value);
}

void ScriptedService::WaitForHeld(size_t count) {
  impl->WaitUntilOrFail("no request was held", [&] { return impl->held >= count; });
}

void ScriptedService::ReleaseHeld() {
  impl->release.Set();
}

void ScriptedService::Announce(std::wstring_view key, std::wstring_view value) {
  impl->Announce(SetMessage(key, value));
}

void ScriptedService::AnnounceRaw(std::wstring message) {
  impl->Announce(std::move(message));
}

void ScriptedService::WaitUntilAnnounced() {
  impl->WaitUntilOrFail("announcements were not taken",
                        [&] { return impl->announcements.empty() && !impl->writing; });
}

std::vector<Request> ScriptedService::Requests() const {
  const std::lock_guard lock(impl->mutex);
  return impl->requests;
}

std::vector<std::wstring> ScriptedService::RequestTexts() const {
  std::vector<std::wstring> texts;
  for (Request& request : Requests()) texts.push_back(std::move(request.text));
  return texts;
}

std::vector<std::wstring> ScriptedService::WaitForRequests(size_t count) {
  impl->WaitUntilOrFail("requests did not arrive", [&] { return impl->requests.size() >= count; });
  return RequestTexts();
}

std::vector<std::wstring> ScriptedService::WaitForRequest(std::wstring_view text) {
  size_t seen = 0;
  impl->WaitUntilOrFail("the request did not arrive", [&] {
    while (seen < impl->requests.size() && impl->requests[seen].text != text) ++seen;
    return seen < impl->requests.size();
  });
  return RequestTexts();
}

void ScriptedService::Forget() {
  const std::lock_guard lock(impl->mutex);
  impl->requests.clear();
}

void ScriptedService::WaitForBatch() {
  impl->WaitUntilOrFail("the batch did not come through",
                        [&] { return impl->repliesOnConnection >= kBatchSize; });
}

int ScriptedService::ConnectionCount() const {
  const std::lock_guard lock(impl->mutex);
  return impl->connections;
}

void ScriptedService::WaitForConnections(int count) {
  impl->WaitUntilOrFail("connections did not come", [&] { return impl->connections >= count; });
}

void ScriptedService::WaitForDisconnect() {
  impl->WaitUntilOrFail("clients did not leave", [&] { return impl->openSessions == 0; });
}

void ScriptedService::BreakSendOnly() {
  impl->WaitForSendOnlySessions();
  impl->BreakSessions(impl->sendOnly);
}

void ScriptedService::BreakDuplex() {
  impl->BreakSessions(impl->duplex);
}

void ScriptedService::BreakBoth() {
  impl->WaitForSendOnlySessions();
  impl->BreakBothSessions();
}

void ScriptedService::Vanish() {
  impl->Close();
}

void ScriptedService::Return() {
  impl->Open(impl->offer);
}

void ScriptedService::Return(PipeOffer offer) {
  impl->Open(offer);
}

}  // namespace support
