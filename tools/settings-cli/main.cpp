// korvu-settings: shows and changes the settings of the settings service of this session.

#include <exception>

#include <fmt/core.h>

#include "settings-cli/command.h"
#include "settings-cli/command_line.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"
#include "settings-cli/text.h"
#include "settings-cli/trace_file.h"

namespace {

using namespace tool::cli;

void Trace(Terminal& terminal) {
  if (const auto file = StartTrace()) {
    terminal.Note(fmt::format("trace: {}", ToUtf8(*file)));
  } else {
    terminal.Complain("the trace file could not be written in c:\\korvu; going on without");
  }
}

ExitCode EndInterrupted(const Command& command, Terminal& terminal, const char* message) {
  if (command.endsWithInterrupt) return ExitCode::kDone;
  terminal.Complain(message);
  return ExitCode::kInterrupted;
}

ExitCode RunConnected(const CommandLine& line, Terminal& terminal) {
  const Command& command = line.command;
  Session session(line.options.apiVersion);
  try {
    session.Connect(line.options.timeout);
  } catch (const Interrupted&) {
    return EndInterrupted(command, terminal, "interrupted before a connection was open");
  }
  try {
    return command.run(session, terminal);
  } catch (const Interrupted&) {
    return EndInterrupted(command, terminal,
                          command.changesSettings
                              ? "interrupted before the service had confirmed anything; "
                                "'korvu-settings list' tells what it has stored"
                              : "interrupted");
  }
}

ExitCode Run(Terminal& terminal) {
  try {
    WatchForInterrupt();
    const CommandLine line = ParseCommandLine(CommandLineArguments());
    if (line.command.runAlone) return line.command.runAlone(terminal);
    if (line.options.trace) Trace(terminal);
    return RunConnected(line, terminal);
  } catch (const UsageError& error) {
    terminal.Complain(error.what());
    return ExitCode::kUsage;
  } catch (const Failure& failure) {
    terminal.Complain(failure.what());
    return failure.code;
  } catch (const std::exception& error) {
    terminal.Complain(error.what());
    return ExitCode::kToolFailed;
  }
}

}  // namespace

int main() {
  Terminal terminal;
  return static_cast<int>(Run(terminal));
}
