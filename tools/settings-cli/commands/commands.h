// Each adds one command to the command line; when it is the one that was given, it checks its
// arguments, throws UsageError or fills in `command`.
#pragma once

namespace CLI {
class App;
}

namespace tool {

struct Command;

void AddStatusCommand(CLI::App& app, Command& command);
void AddWatchCommand(CLI::App& app, Command& command);
void AddGetCommand(CLI::App& app, Command& command);
void AddListCommand(CLI::App& app, Command& command);
void AddSetCommand(CLI::App& app, Command& command);
void AddButtonCommand(CLI::App& app, Command& command);
void AddMenuCommand(CLI::App& app, Command& command);
void AddMenuLimitCommand(CLI::App& app, Command& command);
void AddCenterRightClickCommand(CLI::App& app, Command& command);
void AddCaptureCommand(CLI::App& app, Command& command);
void AddZoomCommand(CLI::App& app, Command& command);
void AddOpaqueCommand(CLI::App& app, Command& command);
void AddRawCommand(CLI::App& app, Command& command);

}  // namespace tool
