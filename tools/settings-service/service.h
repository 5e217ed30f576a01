// The service: settings, clients, commands, script and store, on one thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "settings-service/catalogue.h"
#include "settings-service/command_runner.h"
#include "settings-service/completion_port.h"
#include "settings-service/connection.h"
#include "settings-service/exit_codes.h"
#include "settings-service/faults.h"
#include "settings-service/log.h"
#include "settings-service/options.h"
#include "settings-service/pipe_server.h"
#include "settings-service/script.h"
#include "settings-service/settings_state.h"
#include "settings-service/standard_input.h"
#include "settings-service/store_file.h"

namespace tool::service {

class Service final : private ServiceControl {
 public:
  Service(const Options& options, Script script, Log& log);

  // Until a command, Ctrl+C or the end of the input ends it. Throws ServiceFailure if it cannot
  // start.
  ExitCode Run();

 private:
  using Time = std::chrono::steady_clock::time_point;

  void Announce(const Change& change) override;
  void SendToAll(std::wstring message) override;
  void DropConnections() override;
  void UseFaults(const Faults& next) override;
  void Print(std::string_view text) override;
  void Quit() override;

  void OnRequest(Connection& from, std::wstring_view message);
  void RunInput(StandardInput& input);
  void RunLine(std::string_view line);
  void RunScript(Time now);
  std::optional<std::chrono::milliseconds> TimeToNextDeadline(Time now);

  const bool exitsWithStdin;
  Script script;
  Log& log;
  Faults faults;
  SettingsState state{Catalogue::BuiltIn()};
  CommandRunner commands{state, faults, *this};
  StoreFile store;
  std::shared_ptr<CompletionPort> port = std::make_shared<CompletionPort>();
  PipeServer server;
  Time readySince;
  size_t nextScriptLine = 0;
  bool isEnding = false;
};

}  // namespace tool::service
