#include "service.h"

#include <algorithm>
#include <utility>

#include "world.h"

namespace simulation {
namespace {

constexpr size_t kRequestUnits = 65536;
constexpr uint64_t kPatienceWithStraysUs = 2'500'000;

std::wstring PipeName(Pipe pipe) {
  DWORD session = 0;
  ProcessIdToSessionId(GetCurrentProcessId(), &session);
  const wchar_t* const prefix = pipe == Pipe::kSendOnly
                                    ? LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_)"
                                    : LR"(\\.\pipe\KorvuSettingsSyncher_)";
  return prefix + std::to_wstring(session);
}

uint64_t NowUs() {
  return static_cast<uint64_t>(g_world->Seconds() * 1e6);
}

// Of a message of one member.
struct Member {
  std::wstring name;
  std::wstring value;
};
std::optional<Member> Parse(const std::wstring& message) {
  const size_t middle = message.find(L"\":\"");
  if (!message.starts_with(L"{\"") || middle == message.npos || !message.ends_with(L"\"}")) {
    return std::nullopt;
  }
  return Member{message.substr(2, middle - 2),
                message.substr(middle + 3, message.size() - middle - 5)};
}

}  // namespace

struct Service::Outgoing {
  std::wstring text;
  OVERLAPPED overlapped{};
};

struct Service::Instance {
  Pipe pipe;
  HANDLE handle = INVALID_HANDLE_VALUE;
  HANDLE event = nullptr;
  OVERLAPPED overlapped{};
  bool isConnected = false;
  int64_t connection = 0;
  std::vector<wchar_t> buffer;
  std::list<Outgoing> outgoing;

  struct Reply {
    uint64_t dueUs;
    std::wstring request;
    std::wstring text;
  };
  std::list<Reply> replies;
};

Service::Service(const Plan& plan) : plan(plan), deeds(plan.deeds) {
  for (size_t i = 0; i < values.size(); ++i) values[i] = std::to_wstring(100 + i);
  wake = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  g_world->NameThreads("service", false);
  thread = CreateThread(nullptr, 0, &Main, this, 0, nullptr);
}

Service::~Service() {
  CloseHandle(wake);
  CloseHandle(thread);
}

void Service::Behave() {
  isBehaving = true;
  SetEvent(wake);
}

void Service::Stop() {
  isStopping = true;
  SetEvent(wake);
}

DWORD WINAPI Service::Main(void* service) {
  static_cast<Service*>(service)->Run();
  return 0;
}

void Service::Run() {
  if (plan.isUpAtFirst) ComeUp(3);
  while (!isStopping) {
    if (isBehaving && offered != 3) ComeUp(3);
    if (isBehaving) refusesProbes = false;
    DoDeeds();
    SendDueReplies();
    DropStrays();
    WaitForWork();
  }
  GoDown(false);
}

void Service::WaitForWork() {
  std::vector<HANDLE> events = {wake};
  for (const Instance& instance : instances) events.push_back(instance.event);
  uint64_t nextUs = NowUs() + (isBehaving ? 60'000'000 : 5'000'000);
  if (!isBehaving) {
    for (const ServiceDeed& deed : deeds) {
      if (deed.afterRequests <= requestCount) nextUs = std::min(nextUs, deed.afterUs);
    }
  }
  for (const Instance& instance : instances) {
    for (const auto& reply : instance.replies) nextUs = std::min(nextUs, reply.dueUs);
  }
  if (strayUs) nextUs = std::min(nextUs, *strayUs + kPatienceWithStraysUs);
  const uint64_t now = NowUs();
  const DWORD timeMs = nextUs <= now ? 0 : static_cast<DWORD>((nextUs - now + 999) / 1000);
  g_world->Decide("the service's wait");
  const DWORD waited =
      WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, timeMs);
  if (waited == WAIT_OBJECT_0) ResetEvent(wake);
  // Any that has an end, not the first alone: a busy client must not keep another waiting.
  std::vector<Instance*> signalled;
  for (Instance& instance : instances) {
    if (HasOverlappedIoCompleted(&instance.overlapped)) signalled.push_back(&instance);
  }
  for (Instance* const instance : signalled) Attend(*instance);
}

void Service::DoDeeds() {
  if (isBehaving) return;
  for (;;) {
    const uint64_t now = NowUs();
    const auto due = std::ranges::find_if(deeds, [&](const ServiceDeed& deed) {
      return deed.afterRequests <= requestCount && deed.afterUs <= now;
    });
    if (due == deeds.end()) return;
    const ServiceDeed deed = *due;
    deeds.erase(due);
    Do(deed);
  }
}

void Service::Do(const ServiceDeed& deed) {
  switch (deed.deed) {
    case Deed::kAnnounce:
      Announce(static_cast<size_t>(deed.value), std::to_wstring(1000 + ++valueCount));
      break;
    case Deed::kAnnounceLong:
      Announce(kTextSetting, std::to_wstring(1000 + ++valueCount) +
                                 std::wstring(static_cast<size_t>(deed.value), L'x'));
      break;
    case Deed::kBurst:
      for (int64_t i = 0; i < deed.value; ++i) {
        Announce(static_cast<size_t>(i) % 2, std::to_wstring(1000 + ++valueCount));
      }
      break;
    case Deed::kAnnounceRubbish: {
      static constexpr const wchar_t* kRubbish[] = {
          L"",         L"{",    L"{\"\":\"\"}",
          L"{\"a\":[", L"}\"{", L"{\"TopButtonSingleOptionsList\":[{\"x\":\"y\"}]}"};
      for (Instance& instance : instances) {
        if (instance.pipe == Pipe::kSendOnly && instance.isConnected) {
          Send(instance, kRubbish[static_cast<size_t>(deed.value)]);
        }
      }
      break;
    }
    case Deed::kGoDown:
      GoDown(deed.value != 0);
      // A process that ends takes a while to come again: the deed that follows tells when.
      for (ServiceDeed& next : deeds) {
        if (next.deed != Deed::kComeUp || next.afterRequests == 0) continue;
        next.afterUs += NowUs();
        next.afterRequests = 0;
        break;
      }
      break;
    case Deed::kComeUp:
      ComeUp(deed.value);
      break;
    case Deed::kRefuseProbes:
      refusesProbes = true;
      break;
    case Deed::kAcceptProbes:
      refusesProbes = false;
      break;
    case Deed::kCutSendOnly:
      Cut(Pipe::kSendOnly);
      break;
    case Deed::kCutDuplex:
      Cut(Pipe::kDuplex);
      break;
  }
}

void Service::ComeUp(int64_t pipes) {
  for (const Pipe pipe : {Pipe::kSendOnly, Pipe::kDuplex}) {
    const int64_t bit = int64_t{1} << static_cast<int>(pipe);
    if (!(pipes & bit) || (offered & bit)) continue;
    offered |= bit;
    const int count = plan.hasOneInstance ? 1 : 3;
    for (int i = 0; i < count; ++i) Offer(pipe);
  }
}

void Service::Offer(Pipe pipe) {
  g_world->Decide("the service's CreateNamedPipeW");
  Instance& instance = instances.emplace_back();
  instance.pipe = pipe;
  instance.buffer.resize(pipe == Pipe::kDuplex ? kRequestUnits : 1);
  instance.event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  instance.handle =
      CreateNamedPipeW(PipeName(pipe).c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                       PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_REJECT_REMOTE_CLIENTS,
                       PIPE_UNLIMITED_INSTANCES, plan.bufferBytes, plan.bufferBytes, 0, nullptr);
  Listen(instance);
}

void Service::Listen(Instance& instance) {
  instance.isConnected = false;
  instance.overlapped = OVERLAPPED{};
  instance.overlapped.hEvent = instance.event;
  if (!ConnectNamedPipe(instance.handle, &instance.overlapped) &&
      GetLastError() == ERROR_PIPE_CONNECTED) {
    instance.overlapped.Internal = 0;
    SetEvent(instance.event);
  }
}

void Service::GoDown(bool disconnects) {
  offered = 0;
  strayUs.reset();
  for (Instance& instance : instances) {
    g_world->Decide("the service's end");
    if (instance.isConnected) {
      g_world->Tell(Event::kParted, instance.connection, static_cast<int64_t>(instance.pipe));
    }
    if (disconnects && instance.isConnected) DisconnectNamedPipe(instance.handle);
    CancelIoEx(instance.handle, nullptr);
    CloseHandle(instance.handle);
    CloseHandle(instance.event);
  }
  instances.clear();
}

void Service::Cut(Pipe pipe) {
  for (Instance& instance : instances) {
    if (instance.pipe == pipe && instance.isConnected) Part(instance);
  }
}

void Service::Part(Instance& instance) {
  g_world->Decide("the service's DisconnectNamedPipe");
  g_world->Tell(Event::kParted, instance.connection, static_cast<int64_t>(instance.pipe));
  CancelIoEx(instance.handle, nullptr);
  DisconnectNamedPipe(instance.handle);
  instance.outgoing.clear();
  instance.replies.clear();
  Listen(instance);
}

void Service::Announce(size_t setting, std::wstring value) {
  values[setting] = std::move(value);
  const std::wstring message =
      L"{\"" + std::wstring(kWatchedKeys[setting]) + L"\":\"" + values[setting] + L"\"}";
  for (Instance& instance : instances) {
    if (instance.pipe != Pipe::kSendOnly || !instance.isConnected) continue;
    g_world->Tell(Event::kAnnounced, instance.connection, static_cast<int64_t>(setting), 0,
                  values[setting]);
    Send(instance, message);
  }
}

void Service::Send(Instance& instance, const std::wstring& text) {
  std::erase_if(instance.outgoing,
                [](const Outgoing& out) { return HasOverlappedIoCompleted(&out.overlapped); });
  Outgoing& out = instance.outgoing.emplace_back();
  out.text = text;
  if (!WriteFile(instance.handle, out.text.data(),
                 static_cast<DWORD>(out.text.size() * sizeof(wchar_t)), nullptr, &out.overlapped) &&
      GetLastError() != ERROR_IO_PENDING) {
    instance.outgoing.pop_back();
  }
  g_world->Decide("the service's WriteFile");
}

void Service::Attend(Instance& instance) {
  DWORD byteCount = 0;
  const BOOL succeeded =
      GetOverlappedResult(instance.handle, &instance.overlapped, &byteCount, FALSE);
  if (!instance.isConnected) {
    if (!succeeded) {
      DisconnectNamedPipe(instance.handle);
      Listen(instance);
      return;
    }
    instance.isConnected = true;
    ++connectionCount;
    instance.connection = g_world->ConnectionOf(instance.handle);
    g_world->Tell(Event::kAccepted, instance.connection, static_cast<int64_t>(instance.pipe));
    StartRead(instance);
    return;
  }
  if (!succeeded) {
    Part(instance);
    return;
  }
  const std::wstring request(instance.buffer.data(), byteCount / sizeof(wchar_t));
  const int64_t connection = instance.connection;
  StartRead(instance);
  // A client may leave without waiting for the reply.
  if (instance.isConnected && instance.connection == connection) OnRequest(instance, request);
}

// On the send-only pipe, too: that is how it learns that a client has gone.
void Service::StartRead(Instance& instance) {
  instance.overlapped = OVERLAPPED{};
  instance.overlapped.hEvent = instance.event;
  if (ReadFile(instance.handle, instance.buffer.data(),
               static_cast<DWORD>(instance.buffer.size() * sizeof(wchar_t)), nullptr,
               &instance.overlapped)) {
    SetEvent(instance.event);
  } else if (GetLastError() != ERROR_IO_PENDING) {
    Part(instance);
  }
}

// A client that took the send-only pipe and never came for the other one.
void Service::DropStrays() {
  const auto clients = [&](Pipe pipe) {
    return std::ranges::count_if(instances, [&](const Instance& instance) {
      return instance.pipe == pipe && instance.isConnected;
    });
  };
  if (clients(Pipe::kSendOnly) <= clients(Pipe::kDuplex)) {
    strayUs.reset();
    return;
  }
  if (!strayUs) strayUs = NowUs();
  if (NowUs() < *strayUs + kPatienceWithStraysUs) return;
  strayUs.reset();
  Instance* oldest = nullptr;
  for (Instance& instance : instances) {
    if (instance.pipe != Pipe::kSendOnly || !instance.isConnected) continue;
    if (!oldest || instance.connection < oldest->connection) oldest = &instance;
  }
  Part(*oldest);
}

const ReplyFault* Service::FaultOf(uint64_t request) const {
  if (isBehaving) return nullptr;
  for (const ReplyFault& fault : plan.replyFaults) {
    if (request >= fault.request && request < fault.request + fault.count) return &fault;
  }
  return nullptr;
}

void Service::OnRequest(Instance& instance, const std::wstring& request) {
  const uint64_t number = requestCount++;
  g_world->Tell(Event::kRequest, instance.connection, 0, 0, request);
  std::wstring reply = ReplyTo(request);
  uint64_t dueUs = NowUs() + plan.replyUs;
  if (const ReplyFault* const fault = FaultOf(number)) {
    const bool isValue = request.starts_with(L"{\"GetVal");
    const size_t setting =
        isValue ? WatchedSetting(Parse(request).value_or(Member{}).value) : kWatchedKeys.size();
    const bool isWatched = setting < kWatchedKeys.size();
    switch (fault->manner) {
      case Manner::kLate:
        dueUs += static_cast<uint64_t>(fault->value) * 1000;
        break;
      case Manner::kNever:
        return;
      case Manner::kRubbish:
        reply = L"{}";
        break;
      case Manner::kEmpty:
        reply = L"";
        break;
      case Manner::kClose:
        Part(instance);
        return;
      case Manner::kLong:
        if (!isValue) reply = std::wstring(1500, L' ') + reply;
        // Blanks before a number change nothing; before a text they would be another text.
        if (isWatched && setting != kTextSetting) {
          const std::wstring value = Parse(reply).value_or(Member{}).value;
          reply = L"{\"Val\":\"" + std::wstring(1200, L' ') + value + L"\"}";
        }
        break;
      case Manner::kUnclosed:
        if (isValue && !isWatched) reply = L"{\"Val\":\"";
        break;
    }
  }
  instance.replies.push_back({dueUs, request, reply});
  SendDueReplies();
}

void Service::SendDueReplies() {
  for (Instance& instance : instances) {
    while (!instance.replies.empty() && instance.replies.front().dueUs <= NowUs()) {
      const Instance::Reply reply = instance.replies.front();
      instance.replies.pop_front();
      g_world->Tell(Event::kReply, instance.connection, 0, 0, reply.request + L" " + reply.text);
      Send(instance, reply.text);
    }
  }
}

std::wstring Service::ReplyTo(const std::wstring& request) {
  const auto member = Parse(request);
  if (!member) return L"{\"Ack\":\"0\"}";
  if (member->name == L"Connected") return refusesProbes ? L"{\"Ack\":\"0\"}" : L"{\"Ack\":\"1\"}";
  if (member->name == L"GetVal") {
    const size_t setting = WatchedSetting(member->value);
    const std::wstring value = setting < values.size() ? values[setting] : L"";
    return L"{\"Val\":\"" + value + L"\"}";
  }
  const size_t setting = WatchedSetting(member->name);
  // To whoever set it, too: an older announcement may be read after the reply that follows.
  if (setting < values.size()) Announce(setting, member->value);
  return L"{\"Ack\":\"1\"}";
}

}  // namespace simulation
