#include "settings-service/pipe_server.h"

#include <chrono>
#include <memory>
#include <utility>

#include <windows.h>

#include <fmt/core.h>

#include "settings-service/system_error.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

// Clients notice the end of a service at once, unless they are stopped in a debugger.
constexpr std::chrono::milliseconds kClaimPatience{2000};

std::wstring PipeName(std::wstring_view stem, uint32_t session) {
  return L"\\\\.\\pipe\\" + std::wstring(stem) + std::to_wstring(session);
}

std::string_view SideName(PipeSide side) {
  return side == PipeSide::kSendOnly ? "send-only" : "duplex";
}

}  // namespace

PipeServer::PipeServer(uint32_t session, CompletionPort& port, Log& log, RequestSink sink)
    : port(port),
      log(log),
      sink(std::move(sink)),
      session(session),
      sendOnly(PipeSide::kSendOnly, PipeName(L"KorvuSettingsSyncherSendOnly_", session),
               *access.Get(), port, *this),
      duplex(PipeSide::kDuplex, PipeName(L"KorvuSettingsSyncher_", session), *access.Get(), port,
             *this) {}

void PipeServer::Claim() {
  // Being the first instance is what counts, but not every system that runs Windows programs heeds
  // the flag that asks for it.
  const std::wstring name = L"Global\\KorvuSettingsService_" + std::to_wstring(session);
  onlyService.Reset(CreateMutexW(access.Get(), FALSE, name.c_str()));
  const DWORD error = GetLastError();
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED) {
    throw ServiceFailure(
        fmt::format("another settings service runs in session {} already", session));
  }
  if (!onlyService.IsOpen()) FailWith("cannot create a mutex", error);
  sendOnly.Claim(kClaimPatience);
  duplex.Claim(kClaimPatience);
}

void PipeServer::Open() {
  // In this order, since a client that finds the first waits for the second, and not long.
  duplex.Listen();
  sendOnly.Listen();
  isOpen = true;
}

void PipeServer::SendToAll(std::wstring message) {
  const auto shared = std::make_shared<const std::wstring>(std::move(message));
  const auto now = std::chrono::steady_clock::now();
  sendOnly.ForEachClient([&](Connection& connection) {
    connection.Send(shared, now);
    connection.WriteDue(now);
  });
}

void PipeServer::Reply(Connection& to, std::wstring message, Outbox::Time due) {
  to.Send(std::make_shared<const std::wstring>(std::move(message)), due);
  OnSent(to);
}

void PipeServer::UseFaults(const Faults& next) {
  faults = next;
  MakeOffer();
  WriteReplies(std::chrono::steady_clock::now());
}

void PipeServer::DropConnections() {
  const auto drop = [](Connection& connection) { connection.Drop(); };
  sendOnly.ForEachClient(drop);
  duplex.ForEachClient(drop);
}

std::optional<Outbox::Time> PipeServer::NextReplyDue() {
  std::optional<Outbox::Time> next;
  if (faults.hold) return next;
  duplex.ForEachClient([&](const Connection& connection) {
    const auto due = connection.NextDue();
    if (due && (!next || *due < *next)) next = due;
  });
  return next;
}

void PipeServer::WriteReplies(Outbox::Time now) {
  if (faults.hold) return;
  duplex.ForEachClient([&](Connection& connection) { connection.WriteDue(now); });
}

void PipeServer::TidyUp() {
  if (std::exchange(mayHaveLeft, false)) {
    sendOnly.ForEachClient([](Connection& connection) { connection.NoticeDeparture(); });
  }
  sendOnly.Sweep();
  duplex.Sweep();
  MakeOffer();
}

void PipeServer::Close() {
  isOpen = false;
  sendOnly.CloseAll();
  duplex.CloseAll();
  // Without limit: an operation on a pipe that was cancelled ends at once.
  while (!sendOnly.IsEmpty() || !duplex.IsEmpty()) {
    sendOnly.Sweep();
    duplex.Sweep();
    if (!sendOnly.IsEmpty() || !duplex.IsEmpty()) port.Wait(std::nullopt);
  }
}

void PipeServer::OnConnected(Connection& connection) {
  const uint32_t process = connection.ClientProcess();
  connection.clientNumber = clientNumbers.Connected(connection.Side(), process);
  mayHaveLeft = true;  // a client that comes may be one that went a moment ago
  log.Note(fmt::format("client {}: connected to the {} pipe (process {})", connection.clientNumber,
                       SideName(connection.Side()), process));
}

void PipeServer::OnRequest(Connection& connection, std::wstring_view message) {
  if (log.IsVerbose()) {
    log.Note(fmt::format("client {} > {}", connection.clientNumber, Printable(message)));
  }
  sink(connection, message);
}

void PipeServer::OnSending(const Connection& connection, std::wstring_view message) {
  if (!log.IsVerbose()) return;
  const auto arrow = connection.Side() == PipeSide::kDuplex ? "<" : "<<";
  log.Note(fmt::format("client {} {} {}", connection.clientNumber, arrow, Printable(message)));
}

void PipeServer::OnSent(Connection& connection) {
  if (connection.Side() == PipeSide::kDuplex && faults.hold) return;
  connection.WriteDue(std::chrono::steady_clock::now());
}

void PipeServer::OnDisconnected(const Connection& connection, std::string_view problem) {
  clientNumbers.Disconnected(connection.Side(), connection.clientNumber);
  mayHaveLeft = true;
  const auto pipe = SideName(connection.Side());
  if (problem.empty()) {
    log.Note(fmt::format("client {}: gone from the {} pipe", connection.clientNumber, pipe));
  } else {
    log.Error(fmt::format("client {}: disconnected from the {} pipe, since {}",
                          connection.clientNumber, pipe, problem));
  }
}

void PipeServer::MakeOffer() {
  if (!isOpen) return;
  try {
    MakeOffer(duplex, faults.offer != Offer::kSendOnly);
    MakeOffer(sendOnly, faults.offer != Offer::kDuplex);
    offerProblem.clear();
  } catch (const ServiceFailure& failure) {
    // Tried again after each wait, told once.
    if (offerProblem != failure.what()) log.Error(failure.what());
    offerProblem = failure.what();
  }
}

void PipeServer::MakeOffer(PipeEndpoint& endpoint, bool isOffered) {
  if (!isOffered) return endpoint.Withdraw();
  endpoint.Claim(std::chrono::milliseconds(0));
  if (faults.refuse) {
    endpoint.StopListening();
  } else {
    endpoint.Listen();
  }
}

}  // namespace tool::service
