#include "settings-service/options.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include <CLI/CLI.hpp>

namespace tool::service {
namespace {

constexpr auto kDescription =
    "Stands in for the settings service of a tablet driver: offers its two pipes to the clients "
    "of\n"
    "this session and holds all settings. Commands on standard input make announcements and\n"
    "faults; the command help lists them.";

constexpr auto kExitCodes =
    "Exit codes: 0 ended by quit, Ctrl+C or --exit-with-stdin; 1 could not start: the pipes are\n"
    "taken, or the store or the log cannot be used; 2 wrong command line or script; 3 the service\n"
    "ran, and its store could not be written, or it broke down.";

std::string CheckNotEmpty(const std::string& text) {
  return text.empty() ? "a file name is missing" : std::string();
}

}  // namespace

std::variant<Options, NoService> ParseOptions(std::vector<std::string> arguments) {
  Options options;
  CLI::App app(kDescription, "korvu-settings-service");
  app.footer(kExitCodes);
  app.set_version_flag("--version", "korvu-settings-service " KORVU_VERSION);
  app.add_flag("--verbose", options.isVerbose,
               "print connections, and each message with its direction and client number");
  app.add_flag("--exit-with-stdin", options.exitsWithStdin,
               "end with standard input; otherwise the service goes on without it");
  app.add_option("--session", options.session, "Windows session to serve (default: this one)")
      ->type_name("N");
  app.add_option("--store", options.storeFile, "file that keeps the settings across runs")
      ->type_name("FILE")
      ->check(CheckNotEmpty);
  app.add_option("--script", options.scriptFile, "file with timed commands")
      ->type_name("FILE")
      ->check(CheckNotEmpty);
  app.add_option("--log", options.logFile, "file to which the log is written as well")
      ->type_name("FILE")
      ->check(CheckNotEmpty);

  try {
    // It takes them last first.
    std::ranges::reverse(arguments);
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& end) {
    std::ostringstream output;
    std::ostringstream errorOutput;
    const bool isWanted = app.exit(end, output, errorOutput) == 0;  // --help or --version
    return NoService{isWanted ? ExitCode::kDone : ExitCode::kUsage, output.str(),
                     errorOutput.str()};
  }
  return options;
}

}  // namespace tool::service
