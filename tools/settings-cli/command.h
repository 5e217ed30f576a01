// What a command line comes to.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "settings-cli/exit_code.h"

namespace tool::cli {

class Session;
struct Terminal;

struct GlobalOptions {
  std::chrono::milliseconds timeout{5000};
  int32_t apiVersion = 9;
  bool trace = false;
};

struct Command {
  // Runs without a service; else `run` does, connected.
  std::function<ExitCode(Terminal&)> runAlone;
  std::function<ExitCode(Session&, Terminal&)> run;
  // Whether it sends messages of its own making, which need API version 9.
  bool needsManualRequests = true;
  // Whether Ctrl+C is how it is meant to be ended.
  bool endsWithInterrupt = false;
  bool changesSettings = false;
};

}  // namespace tool::cli
