// How the program ends. README.md and --help list the same codes.
#pragma once

#include <stdexcept>
#include <string>

namespace tool::cli {

enum class ExitCode : int {
  kDone = 0,
  kNoConnection = 1,
  kUsage = 2,
  kNotConfirmed = 3,  // the service did not answer, or did not store what was asked for
  kToolFailed = 4,    // the tool itself failed: mostly, its output could not be written
  kInterrupted = 130,
};

// The command line asks for something that cannot be.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The command ends here, with a message for the user.
struct Failure : std::runtime_error {
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code(code) {}
  ExitCode code;
};

// Ctrl+C, while something was waited for.
struct Interrupted {};

}  // namespace tool::cli
