#include "settings-service/pipe_endpoint.h"

#include <algorithm>
#include <string>
#include <utility>

#include <fmt/core.h>

#include "settings-service/system_error.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

constexpr std::ptrdiff_t kListeners = 8;
constexpr DWORD kBufferBytes = 64 * 1024;
constexpr DWORD kClaimPauseMs = 50;

}  // namespace

PipeEndpoint::PipeEndpoint(PipeSide side, std::wstring name, SECURITY_ATTRIBUTES& access,
                           CompletionPort& port, ConnectionEvents& events)
    : side(side), name(std::move(name)), access(access), port(port), events(events) {}

KorvuISD::PipeHandle PipeEndpoint::CreateInstance(DWORD flags) {
  const DWORD direction = side == PipeSide::kSendOnly ? PIPE_ACCESS_OUTBOUND : PIPE_ACCESS_DUPLEX;
  return KorvuISD::PipeHandle(CreateNamedPipeW(
      name.c_str(), direction | FILE_FLAG_OVERLAPPED | flags,
      PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS,
      PIPE_UNLIMITED_INSTANCES, kBufferBytes, kBufferBytes, 0, &access));
}

bool PipeEndpoint::HasInstance() const {
  const auto isOpen = [](const auto& instance) { return !instance->IsClosed(); };
  return keeper.IsOpen() || std::ranges::any_of(instances, isOpen);
}

void PipeEndpoint::Claim(std::chrono::milliseconds patience) {
  if (keeper.IsOpen()) return;
  const auto deadline = std::chrono::steady_clock::now() + patience;
  // While an instance is ours the name is, and this one cannot be the first.
  const DWORD flags = HasInstance() ? 0 : FILE_FLAG_FIRST_PIPE_INSTANCE;
  for (;;) {
    keeper = CreateInstance(flags);
    if (keeper.IsOpen()) break;
    const DWORD error = GetLastError();
    if (error != ERROR_ACCESS_DENIED) FailWith("cannot create the pipe " + ToUtf8(name), error);
    if (std::chrono::steady_clock::now() >= deadline) {
      throw ServiceFailure(
          fmt::format("the pipe {} is taken: does another settings service run in this session?",
                      ToUtf8(name)));
    }
    Sleep(kClaimPauseMs);
  }
  Park();
}

// An instance that a client has taken and that was disconnected is neither free nor listening.
void PipeEndpoint::Park() {
  const KorvuISD::PipeHandle client(
      CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  DisconnectNamedPipe(keeper.Get());
}

void PipeEndpoint::Listen() {
  const auto isListening = [](const auto& instance) { return instance->IsListening(); };
  for (auto listeners = std::ranges::count_if(instances, isListening); listeners < kListeners;
       ++listeners) {
    KorvuISD::PipeHandle pipe = CreateInstance(0);
    if (!pipe.IsOpen() || !port.Add(pipe.Get())) {
      const DWORD error = GetLastError();
      FailWith("cannot create an instance of the pipe " + ToUtf8(name), error);
    }
    instances.push_back(std::make_unique<Connection>(std::move(pipe), side, events));
  }
}

void PipeEndpoint::StopListening() {
  for (const auto& instance : instances) {
    if (instance->IsListening()) instance->Close();
  }
}

void PipeEndpoint::Withdraw() {
  StopListening();
  keeper.Reset();
}

void PipeEndpoint::CloseAll() {
  for (const auto& instance : instances) instance->Close();
  keeper.Reset();
}

void PipeEndpoint::Sweep() {
  std::erase_if(instances, [](const auto& instance) { return instance->IsGone(); });
}

}  // namespace tool::service
