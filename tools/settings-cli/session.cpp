#include "settings-cli/session.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <variant>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/callbacks.h"
#include "settings-cli/events.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/service_diagnosis.h"
#include "shared/keys.h"
#include "shared/start_thread.h"

namespace tool::cli {
namespace {

// Between two signs of life. The library gives up one exchange after 3 s, but values that nothing
// is called back for may come in a row, and a request that is made just when the service leaves is
// answered only when it returns.
constexpr std::chrono::seconds kPatience{30};

// Long enough for the library to end a healthy connection; it looks every 100 ms.
constexpr std::chrono::seconds kShutdownLimit{1};

// The context of a manual request is its number.
void KORVUISD_CALL OnManualReply(void* context, const wchar_t* text, size_t* partLengths,
                                 size_t) noexcept {
  const std::wstring_view parts(text, partLengths[0] + partLengths[1]);
  TheInbox().Put(Answer{reinterpret_cast<uintptr_t>(context),
                        std::wstring(parts.substr(0, partLengths[0])),
                        std::wstring(parts.substr(partLengths[0]))});
}

}  // namespace

Session::Session(int32_t apiVersion) : apiVersion(apiVersion) {
  KorvuISD_SetAPIVersion(apiVersion);
  const KorvuISD_Callbacks callbacks = CallbacksIntoInbox();
  KorvuISD_RegisterCallbacks(&callbacks, &TheInbox());
}

Session::~Session() {
  // A client that never connected must not be shut down: the call would not return.
  if (!isConnected) return;
  // While the service is away the library first ends its attempt to reconnect, for up to 30 s. So
  // this happens on a thread that the end of the process may cut off; nothing is lost by that.
  StartThread([] {
    KorvuISD_Shutdown();
    TheInbox().Put(ShutdownEnded{});
  });
  TheInbox().ForgetInterrupt();
  const Clock::time_point deadline = Clock::now() + kShutdownLimit;
  for (;;) {
    const Delivery delivery = TheInbox().Take(deadline);
    if (delivery.wake != Wake::kLetter) return;
    if (std::holds_alternative<ShutdownEnded>(delivery.letter)) return;
  }
}

void Session::Connect(std::chrono::milliseconds timeout) {
  // On a thread of its own, so that Ctrl+C need not wait for the time-out.
  // To the library 0 means without end; to our users it means to try once.
  const auto timeoutMs = static_cast<uint32_t>(std::max<int64_t>(timeout.count(), 1));
  StartThread([timeoutMs] { TheInbox().Put(ConnectEnded{KorvuISD_Connect(timeoutMs)}); });

  while (!isConnected) {
    Delivery delivery = TheInbox().Take(Clock::time_point::max());
    if (delivery.wake == Wake::kInterrupt) throw Interrupted();
    if (const auto* end = std::get_if<ConnectEnded>(&delivery.letter)) {
      if (end->result != KorvuISD_ErrorNone) {
        throw Failure(ExitCode::kNoConnection, WhyThereIsNoConnection());
      }
      isConnected = true;
    } else {
      early.push_back(std::move(delivery.letter));
    }
  }
}

void Session::WaitForValues() {
  // A value that the library does not ask for by itself: its request waits behind all of the
  // library's, and none of those is answered in its place.
  const Answer last = Await(Post(ValueRequest(kHoverClickUiKey)));
  if (last.requestPart.empty() || (last.value.empty() && !IsAnswering())) {
    throw Failure(ExitCode::kNotConfirmed,
                  "connected, but the service stopped answering before all values had arrived. "
                  "Restart the service; --trace records what it answered last");
  }
}

std::vector<std::optional<std::wstring>> Session::Ask(std::span<const std::wstring> messages) {
  std::vector<uint64_t> requests;
  for (const std::wstring& message : messages) requests.push_back(Post(message));
  // An empty reply may be an empty value or a failed exchange. A failed exchange is a lost
  // connection, and then a probe that waits behind it fails, too.
  const uint64_t probe = Post(std::wstring(kConnectionProbe));

  std::vector<std::optional<std::wstring>> replies;
  replies.reserve(requests.size());
  for (const uint64_t request : requests) replies.emplace_back(Await(request).value);
  if (Await(probe).value.empty()) {
    for (std::optional<std::wstring>& reply : replies) {
      if (reply->empty()) reply.reset();
    }
  }
  return replies;
}

bool Session::IsAnswering() {
  return !Await(Post(std::wstring(kConnectionProbe))).value.empty();
}

uint64_t Session::Post(const std::wstring& message) {
  const uint64_t request = ++lastRequest;
  KorvuISD_SendManual(message.c_str(), reinterpret_cast<void*>(static_cast<uintptr_t>(request)),
                      OnManualReply);
  return request;
}

Delivery Session::Next(Clock::time_point deadline) {
  Delivery delivery{Wake::kLetter, {}};
  if (early.empty()) {
    delivery = TheInbox().Take(deadline);
    if (delivery.wake != Wake::kLetter) return delivery;
  } else {
    delivery.letter = std::move(early.front());
    early.pop_front();
  }
  if (const auto* event = std::get_if<Event>(&delivery.letter)) values.Apply(*event);
  return delivery;
}

// An answer without texts stands for one that did not come in time.
Answer Session::Await(uint64_t request) {
  for (;;) {
    const auto found = std::find_if(answers.begin(), answers.end(), [&](const Answer& answer) {
      return answer.request == request;
    });
    if (found != answers.end()) {
      Answer answer = std::move(*found);
      answers.erase(found);
      return answer;
    }
    Delivery delivery = Next(isSilent ? Clock::time_point::min() : Clock::now() + kPatience);
    if (delivery.wake == Wake::kInterrupt) throw Interrupted();
    if (delivery.wake == Wake::kDeadline) {
      isSilent = true;
      return {};
    }
    if (auto* answer = std::get_if<Answer>(&delivery.letter)) answers.push_back(std::move(*answer));
  }
}

}  // namespace tool::cli
