// With what the program ends; the help and README.md tell users.
#pragma once

namespace tool::service {

enum class ExitCode {
  kDone = 0,           // ended by quit, Ctrl+C or the end of standard input
  kCouldNotStart = 1,  // the pipes are taken, or the store or the log cannot be used
  kUsage = 2,          // the command line or the script is wrong
  kFailed = 3,         // the service ran, and the store could not be written, or it broke down
};

}  // namespace tool::service
