// The command line: options and commands, all checked before anything is connected or sent.
#pragma once

#include <string>
#include <vector>

#include "settings-cli/command.h"

namespace tool::cli {

struct CommandLine {
  GlobalOptions options;
  Command command;
};

// Throws UsageError for an invalid command line. Help and version are commands, too.
CommandLine ParseCommandLine(std::vector<std::string> arguments);

}  // namespace tool::cli
