// The command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "settings-service/exit_codes.h"

namespace tool::service {

struct Options {
  bool isVerbose = false;
  bool exitsWithStdin = false;
  std::optional<uint32_t> session;
  // File names are UTF-8; empty where there is none.
  std::string storeFile;
  std::string scriptFile;
  std::string logFile;
};

// The command line asks for no service.
struct NoService {
  ExitCode exitCode;
  std::string output;
  std::string errorOutput;
};

// `arguments` are UTF-8, without the program's name.
std::variant<Options, NoService> ParseOptions(std::vector<std::string> arguments);

}  // namespace tool::service
