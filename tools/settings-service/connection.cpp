#include "settings-service/connection.h"

#include <cstring>
#include <string>
#include <utility>

#include <fmt/core.h>

#include "settings-service/system_error.h"

namespace tool::service {
namespace {

// No request comes near this. What a client sends must not fill the memory.
constexpr size_t kLongestRequestBytes = size_t{4} * 1024 * 1024;

bool IsDeparture(DWORD error) {
  return error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA || error == ERROR_PIPE_NOT_CONNECTED;
}

std::wstring AsText(const std::vector<std::byte>& bytes) {
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  // Half a character is no character: it must not pass for a message without it.
  if (bytes.size() % sizeof(wchar_t) != 0) text.push_back(L'\xFFFD');
  return text;
}

}  // namespace

Connection::Connection(KorvuISD::PipeHandle pipe, PipeSide side, ConnectionEvents& events)
    : pipe(std::move(pipe)), side(side), events(events) {
  StartListening();
}

uint32_t Connection::ClientProcess() const {
  ULONG processId = 0;
  return GetNamedPipeClientProcessId(pipe.Get(), &processId) ? processId : 0;
}

void Connection::StartListening() {
  if (ConnectNamedPipe(pipe.Get(), incoming.Begin())) return;
  const DWORD error = GetLastError();
  if (error == ERROR_IO_PENDING) return;
  incoming.DidNotStart();
  if (error == ERROR_PIPE_CONNECTED) {
    BecomeConnected();  // a client was quicker
  } else {
    Close();
  }
}

void Connection::BecomeConnected() {
  state = State::kConnected;
  events.OnConnected(*this);
  if (IsConnected() && side == PipeSide::kDuplex) StartReading();
}

void Connection::StartReading() {
  if (ReadFile(pipe.Get(), piece.data(), static_cast<DWORD>(piece.size()), nullptr,
               incoming.Begin())) {
    return;
  }
  const DWORD error = GetLastError();
  // A piece of a longer message comes out of the port like a whole one.
  if (error == ERROR_IO_PENDING || error == ERROR_MORE_DATA) return;
  incoming.DidNotStart();
  PartAfter("a read failed", error);
}

void Connection::OnEnded(Operation& operation, DWORD byteCount, DWORD error) {
  if (IsClosed()) return;
  if (&operation == &outgoing) {
    OnWritten(error);
  } else if (IsConnected()) {
    OnRead(byteCount, error);
  } else if (error == ERROR_SUCCESS) {
    BecomeConnected();
  } else {
    Close();  // a client that came and went; the owner listens anew
  }
}

void Connection::OnRead(DWORD byteCount, DWORD error) {
  if (error != ERROR_SUCCESS && error != ERROR_MORE_DATA) {
    return PartAfter("a read failed", error);
  }
  request.insert(request.end(), piece.begin(), piece.begin() + byteCount);
  if (request.size() > kLongestRequestBytes) return Part("its request has no end");
  if (error == ERROR_SUCCESS) {
    const std::wstring message = AsText(std::exchange(request, {}));
    events.OnRequest(*this, message);
  }
  if (IsConnected()) StartReading();
}

void Connection::Send(SharedText message, Outbox::Time due) {
  if (!IsConnected()) return;
  if (!outbox.Push(std::move(message), due)) Part("it does not read what it is sent");
}

void Connection::WriteDue(Outbox::Time now) {
  if (!IsConnected() || outgoing.IsPending()) return;
  written = outbox.TakeDue(now);
  if (!written) return;
  events.OnSending(*this, *written);
  const auto byteCount = static_cast<DWORD>(written->size() * sizeof(wchar_t));
  if (WriteFile(pipe.Get(), written->data(), byteCount, nullptr, outgoing.Begin())) return;
  const DWORD error = GetLastError();
  if (error == ERROR_IO_PENDING) return;
  outgoing.DidNotStart();
  PartAfter("a write failed", error);
}

void Connection::OnWritten(DWORD error) {
  written.reset();
  if (error != ERROR_SUCCESS) return PartAfter("a write failed", error);
  events.OnSent(*this);
}

std::optional<Outbox::Time> Connection::NextDue() const {
  return IsConnected() && !outgoing.IsPending() ? outbox.NextDue() : std::nullopt;
}

void Connection::NoticeDeparture() {
  // A connected instance cannot listen; the refusal tells whether the client is still there.
  if (!IsConnected() || incoming.IsPending()) return;
  if (ConnectNamedPipe(pipe.Get(), incoming.Begin())) return;
  const DWORD error = GetLastError();
  if (error == ERROR_IO_PENDING) return;
  incoming.DidNotStart();
  if (error == ERROR_NO_DATA) Part({});
}

void Connection::Close() {
  if (IsClosed()) return;
  state = State::kClosed;
  // Their ends come out of the port; until then they, and what they read and write, stay.
  CancelIoEx(pipe.Get(), nullptr);
  // Without this a client's open handle would keep the instance, and with it the pipe's name.
  DisconnectNamedPipe(pipe.Get());
  pipe.Reset();
}

void Connection::Part(std::string_view problem) {
  if (IsClosed()) return;
  events.OnDisconnected(*this, problem);
  Close();
}

void Connection::PartAfter(std::string_view step, DWORD error) {
  if (IsDeparture(error)) return Part({});
  Part(fmt::format("{}: {}", step, SystemErrorText(error)));
}

}  // namespace tool::service
