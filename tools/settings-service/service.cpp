#include "settings-service/service.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <variant>

#include <windows.h>

#include <fmt/core.h>

#include "settings-service/commands.h"
#include "settings-service/console_text.h"
#include "settings-service/end_request.h"
#include "settings-service/protocol.h"
#include "settings-service/request_handler.h"

namespace tool::service {
namespace {

uint32_t SessionOfThisProcess() {
  DWORD session = 0;
  return ProcessIdToSessionId(GetCurrentProcessId(), &session) ? session : 0;
}

}  // namespace

Service::Service(const Options& options, Script script, Log& log)
    : exitsWithStdin(options.exitsWithStdin),
      script(std::move(script)),
      log(log),
      store(options.storeFile, state, log),
      server(options.session.value_or(SessionOfThisProcess()), *port, log,
             [this](Connection& from, std::wstring_view message) { OnRequest(from, message); }) {}

ExitCode Service::Run() {
  // The pipes first: a store must not be touched while another service writes it.
  server.Claim();
  store.Load();
  const EndRequest endRequest(port);
  server.Open();
  readySince = std::chrono::steady_clock::now();
  Print("ready\n");
  StandardInput input(port);

  while (!isEnding && !endRequest.IsMade()) {
    const Time now = std::chrono::steady_clock::now();
    RunScript(now);
    server.WriteReplies(now);
    store.SaveIfDue(now);
    if (isEnding) break;
    // Ended by a client, by the input's thread, by Ctrl+C, or by what is due.
    port->Wait(TimeToNextDeadline(now));
    server.TidyUp();
    RunInput(input);
  }

  server.Close();
  return store.SaveNow() ? ExitCode::kDone : ExitCode::kFailed;
}

void Service::Announce(const Change& change) {
  const Setting* setting = state.Known().Find(change.key);
  const bool isList = setting && setting->kind == SettingKind::kOptionList;
  const auto build = faults.split ? BuildLongAnnouncement : BuildAnnouncement;
  std::wstring message = build(change.key, change.value, isList);
  server.SendToAll(faults.garble ? Garble(message) : std::move(message));
}

void Service::SendToAll(std::wstring message) {
  server.SendToAll(std::move(message));
}

void Service::DropConnections() {
  server.DropConnections();
}

void Service::UseFaults(const Faults& next) {
  server.UseFaults(next);
}

void Service::Print(std::string_view text) {
  PrintOutput(text);
}

void Service::Quit() {
  isEnding = true;
}

void Service::OnRequest(Connection& from, std::wstring_view message) {
  const RequestOutcome outcome = HandleRequest(message, faults.protocolVersion, state);
  if (!outcome.problem.empty()) {
    log.Error(fmt::format("client {}: {}", from.clientNumber, outcome.problem));
  }
  for (const Change& change : outcome.changes) Announce(change);
  if (faults.mute) return;
  std::wstring reply = faults.split ? BuildLongReply(outcome.reply) : BuildReply(outcome.reply);
  server.Reply(from, faults.garble ? Garble(reply) : std::move(reply),
               std::chrono::steady_clock::now() + faults.delay);
}

void Service::RunInput(StandardInput& input) {
  // One at a time: clients must get their turn, however fast the commands come.
  if (const auto line = input.TakeLine()) RunLine(*line);
  if (exitsWithStdin && input.IsAtEnd()) isEnding = true;
}

void Service::RunLine(std::string_view line) {
  if (line.find_first_not_of(" \t") == std::string_view::npos) return;
  const ParsedCommand parsed = ParseCommand(line, state.Known());
  const auto* error = std::get_if<CommandError>(&parsed);
  const std::string problem = error ? error->message : commands.Run(std::get<Command>(parsed));
  // One line of answer to each command, so that whoever gives them knows when they are done.
  if (problem.empty()) {
    Print("ok\n");
  } else {
    log.ErrorAlreadyTold(problem);
    Print(fmt::format("error: {}\n", problem));
  }
}

void Service::RunScript(Time now) {
  for (; !isEnding && nextScriptLine < script.lines.size(); ++nextScriptLine) {
    const ScriptLine& line = script.lines[nextScriptLine];
    if (readySince + line.time > now) return;
    const std::string problem = commands.Run(line.command);
    if (!problem.empty()) log.Error(fmt::format("script line {}: {}", line.number, problem));
  }
}

std::optional<std::chrono::milliseconds> Service::TimeToNextDeadline(Time now) {
  std::optional<Time> next = server.NextReplyDue();
  const auto consider = [&](std::optional<Time> due) {
    if (due && (!next || *due < *next)) next = due;
  };
  consider(store.NextDue());
  if (nextScriptLine < script.lines.size()) {
    consider(readySince + script.lines[nextScriptLine].time);
  }
  if (!next) return std::nullopt;
  return std::chrono::ceil<std::chrono::milliseconds>(std::max(*next, now) - now);
}

}  // namespace tool::service
