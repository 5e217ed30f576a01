#include "settings-cli/command_line.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/arguments.h"
#include "settings-cli/assignment.h"
#include "settings-cli/buttons.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/plain_change.h"

namespace tool::cli {
namespace {

constexpr const char* kProgram = "korvu-settings";

constexpr const char* kFooter =
    "Exit codes:\n"
    "  0    done\n"
    "  1    no connection to the settings service\n"
    "  2    wrong command line\n"
    "  3    the service did not answer, or did not store the change\n"
    "  4    the tool itself failed: mostly, its output could not be written\n"
    "  130  interrupted by Ctrl+C (watch and capture: 0)\n"
    "\n"
    "A word that begins with '-' and is no number follows '--'.\n"
    "'korvu-settings COMMAND --help' tells more of a command.";

// A word that may be absent. CLI11's own optional would take an empty one for absent.
CLI::Option* AddText(CLI::App& app, const std::string& name, std::optional<std::string>& text,
                     const std::string& help) {
  return app.add_option_function<std::string>(
      name, [&text](const std::string& word) { text = word; }, help);
}

void AddDuration(CLI::App& app, std::optional<std::string>& duration) {
  AddText(app, "--for", duration, "end after so long")->type_name("SECONDS");
}

void AddChoice(CLI::App& app, ValueChoice& choice) {
  AddText(app, "VALUE", choice.value, "new value");
  app.add_flag("--default", choice.useDefault,
               "let the service use its default; then without VALUE");
}

void AddAssignment(CLI::App& app, AssignmentOptions& assignment) {
  AddText(app, "CODE", assignment.code, "function code; the service defines them");
  AddText(app, "TEXT", assignment.text,
          "for code 8 the keystrokes, for code 23 the path or name of the application");
  app.add_flag("--default", assignment.useDefault,
               "let the service use its default; then without CODE");
}

// The program's options, and each command with its own.
class Syntax {
 public:
  Syntax(CLI::App& program, CommandLine& line) : program(program), line(line) {
    AddGlobalOptions();
    AddStatus();
    AddWatch();
    AddGet();
    AddList();
    AddSet();
    AddButton();
    AddMenu();
    AddMenuLimit();
    AddCenterRightClick();
    AddCapture();
    AddZoom();
    AddOpaque();
    AddRaw();
  }

 private:
  template <class Options>
  struct Added {
    CLI::App& app;
    Options& options;
  };

  // `work` makes the command of its options, once they are filled in.
  template <class Options>
  Added<Options> AddCommand(const char* name, const char* help, Command (*work)(const Options&)) {
    const auto options = std::make_shared<Options>();
    CLI::App* const app = program.add_subcommand(name, help);
    app->callback([options, work, &command = line.command] { command = work(*options); });
    return {*app, *options};
  }

  void AddGlobalOptions() {
    GlobalOptions& options = line.options;
    program
        .add_option_function<std::string>(
            "--timeout",
            [&](const std::string& text) { options.timeout = ParseSeconds("--timeout", text); },
            "wait so long for the service (default 5; 0 tries once)")
        ->type_name("SECONDS");
    program
        .add_option_function<std::string>(
            "--api-version",
            [&](const std::string& text) {
              options.apiVersion = ParseNumber("--api-version", text, 0, KORVUISD_API_VERSION_MAX);
            },
            "act as an application of this API version, 0 to 9 (default 9; below 9 only watch)")
        ->type_name("N");
    program.add_flag("--trace", options.trace, "record the library's trace, and tell where");
  }

  void AddStatus() {
    const auto status =
        AddCommand("status", "Shows versions, features, pens and the main settings", ShowStatus);
    status.app.add_flag("--json", status.options.json, "print a JSON object");
  }

  void AddWatch() {
    const auto watch =
        AddCommand("watch", "Prints a line for each callback, until Ctrl+C", WatchCallbacks);
    AddDuration(watch.app, watch.options.duration);
    watch.app.add_flag("--json", watch.options.json, "print each as a JSON object on a line");
    watch.app.add_flag("--time", watch.options.time, "print the time, too");
  }

  void AddGet() {
    const auto get = AddCommand("get", "Prints values as the service has them", GetValues);
    get.app
        .add_option("KEY", get.options.keys,
                    "whole key, or as much of its end as is needed to tell it from others")
        ->required();
    get.app.add_flag("--json", get.options.json, "print a JSON object: value by key");
  }

  void AddList() {
    const auto list = AddCommand("list", "Prints all keys and their values", ListValues);
    list.app.add_flag("--json", list.options.json, "print a JSON object: value by key");
  }

  void AddSet() {
    const auto set = AddCommand("set", "Changes a setting", SetSetting);
    set.app.add_option("NAME", set.options.name, "the setting; see below");
    AddChoice(set.app, set.options.choice);
    set.app.add_flag("--list", set.options.list, "show all names, and what values they take");
    set.app.footer("Names and values:\n" + SetHelp());
  }

  void AddButton() {
    const auto button =
        AddCommand("button", "Gives a button of the pen or the dock a function", SetButton);
    button.app.add_option("WHICH", button.options.which, "the button; see below")->required();
    AddAssignment(button.app, button.options.assignment);
    button.app.footer("Buttons:" + ButtonsHelp());
  }

  void AddMenu() {
    const auto menu = AddCommand("menu", "Gives a wedge of the radial menu a function", SetWedge);
    menu.app.add_option("RING", menu.options.ring, "1 or 2")->required();
    menu.app
        .add_option("WEDGE", menu.options.wedge,
                    "1 to 8, clockwise from East, or a compass point: east, se, south, ...")
        ->required();
    AddAssignment(menu.app, menu.options.assignment);
    AddText(menu.app, "--name", menu.options.assignment.name,
            "display name; else the service derives one");
  }

  void AddMenuLimit() {
    const auto limit = AddCommand(
        "menu-limit", "Sets how many wedges a ring of the radial menu shows", SetMenuLimit);
    limit.app.add_option("RING", limit.options.ring, "1 or 2")->required();
    limit.app.add_option("N", limit.options.limit, "0 to 8")->required();
  }

  void AddCenterRightClick() {
    const auto click = AddCommand("center-right-click",
                                  "Switches the right click in the centre of the radial menu",
                                  SetCenterRightClick);
    AddChoice(click.app, click.options);
  }

  void AddCapture() {
    const auto capture = AddCommand(
        "capture", "Captures keystrokes and prints them as a button takes them", CaptureKeystrokes);
    AddDuration(capture.app, capture.options.duration);
  }

  void AddZoom() {
    const auto zoom =
        AddCommand("zoom", "Replaces the display zoom map by one entry of four numbers", SetZoom);
    constexpr std::array kNames{"A", "B", "C", "D"};
    for (size_t at = 0; at < kNames.size(); ++at) {
      AddText(zoom.app, kNames[at], zoom.options.numbers[at], "whole number");
    }
    zoom.app.add_flag("--default", zoom.options.useDefault, "let the service use its default");
  }

  void AddOpaque() {
    const auto opaque = AddCommand("opaque", "Changes a setting of opaque mode", SetOpaque);
    opaque.app.add_option("WHAT", opaque.options.what, "the setting; see below")->required();
    AddChoice(opaque.app, opaque.options.choice);
    opaque.app.footer("Settings and values (enable and display-path have no --default):\n" +
                      OpaqueHelp() + '\n');
  }

  void AddRaw() {
    const auto raw = AddCommand(
        "raw",
        "Sends a message as it stands and prints the reply's value (1: acknowledged; nothing: the "
        "value is empty, or the service does not know the key)",
        SendRaw);
    raw.app
        .add_option("MESSAGE", raw.options.message,
                    R"(such as {"GetVal":"ComponentsDriver\\ServiceVersion"})")
        ->required();
  }

  CLI::App& program;
  CommandLine& line;
};

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
  const Syntax syntax(app, line);

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

}  // namespace tool::cli
