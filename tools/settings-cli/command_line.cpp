#include "command_line.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "KorvuTabletSettingsAPI.h"
#include "arguments.h"
#include "commands/commands.h"
#include "console.h"

namespace tool {
namespace {

constexpr const char* kProgram = "korvu-settings";

constexpr const char* kFooter =
    "Exit codes:\n"
    "  0    done\n"
    "  1    no connection to the settings service\n"
    "  2    wrong command line\n"
    "  3    the service did not answer, or did not store the change\n"
    "  4    the result could not be written\n"
    "  130  interrupted by Ctrl+C (watch and capture: 0)\n"
    "\n"
    "A word that begins with '-' and is no number follows '--'.\n"
    "'korvu-settings COMMAND --help' tells more of a command.";

void AddGlobalOptions(CLI::App& app, GlobalOptions& options) {
  app.add_option_function<std::string>(
         "--timeout",
         [&options](const std::string& text) { options.timeout = ParseSeconds("--timeout", text); },
         "wait so long for the service (default 5; 0 tries once)")
      ->type_name("SECONDS");
  app.add_option_function<std::string>(
         "--api-version",
         [&options](const std::string& text) {
           options.apiVersion = ParseNumber("--api-version", text, 0, KORVUISD_API_VERSION_MAX);
         },
         "act as an application of this API version, 0 to 9 (default 9; below 9 only watch)")
      ->type_name("N");
  app.add_flag("--trace", options.trace, "record the library's trace, and tell where");
}

void AddCommands(CLI::App& app, Command& command) {
  AddStatusCommand(app, command);
  AddWatchCommand(app, command);
  AddGetCommand(app, command);
  AddListCommand(app, command);
  AddSetCommand(app, command);
  AddButtonCommand(app, command);
  AddMenuCommand(app, command);
  AddMenuLimitCommand(app, command);
  AddCenterRightClickCommand(app, command);
  AddCaptureCommand(app, command);
  AddZoomCommand(app, command);
  AddOpaqueCommand(app, command);
  AddRawCommand(app, command);
}

Command Printing(std::string text) {
  Command command;
  command.runAlone = [text = std::move(text)](Terminal& terminal) {
    terminal.out.Write(text);
    return ExitCode::kDone;
  };
  return command;
}

// The command that was being parsed, for the hint.
std::string WithHint(const CLI::App& app, const std::string& message) {
  std::string program = kProgram;
  for (const CLI::App* command : app.get_subcommands()) program += ' ' + command->get_name();
  return fmt::format("{}\nTry '{} --help'.", message, program);
}

std::string WithoutCommand(const CLI::App& app) {
  const std::vector<std::string> words = app.remaining();
  if (words.empty()) return "a command is missing";
  return fmt::format("there is no command or option '{}'", words.front());
}

}  // namespace

CommandLine ParseCommandLine(std::vector<std::string> arguments) {
  CommandLine line;
  CLI::App app("Shows and changes the settings of the pen tablet's settings service.", kProgram);
  app.require_subcommand(1);
  app.fallthrough();
  app.set_version_flag("--version", fmt::format("{} {}", kProgram, KORVU_VERSION));
  app.footer(kFooter);
  AddGlobalOptions(app, line.options);
  AddCommands(app, line.command);

  try {
    std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return {{}, Printing(app.help())};
  } catch (const CLI::CallForVersion& version) {
    return {{}, Printing(std::string(version.what()) + '\n')};
  } catch (const CLI::RequiredError& error) {
    throw UsageError(
        WithHint(app, app.get_subcommands().empty() ? WithoutCommand(app) : error.what()));
  } catch (const CLI::ParseError& error) {
    throw UsageError(WithHint(app, error.what()));
  } catch (const UsageError& error) {
    throw UsageError(WithHint(app, error.what()));
  }

  if (line.command.needsManualRequests && line.command.run &&
      line.options.apiVersion < KORVUISD_API_VERSION_MAX) {
    throw UsageError(WithHint(app,
                              "this command asks the service questions of its own, which needs API "
                              "version 9; with a lower --api-version there is only watch"));
  }
  return line;
}

}  // namespace tool
