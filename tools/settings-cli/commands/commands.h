// The commands: which words follow each, and what they come to. The words stand as they were typed;
// each function checks them and throws UsageError. A word that is absent is not an empty one.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "settings-cli/assignment.h"
#include "settings-cli/command.h"
#include "settings-cli/plain_change.h"

namespace tool::cli {

struct StatusOptions {
  bool json = false;
};
Command ShowStatus(const StatusOptions& options);

struct WatchOptions {
  std::optional<std::string> duration;
  bool json = false;
  bool time = false;
};
Command WatchCallbacks(const WatchOptions& options);

struct GetOptions {
  std::vector<std::string> keys;
  bool json = false;
};
Command GetValues(const GetOptions& options);

struct ListOptions {
  bool json = false;
};
Command ListValues(const ListOptions& options);

struct SetOptions {
  std::string name;
  ValueChoice choice;
  bool list = false;
};
Command SetSetting(const SetOptions& options);
std::string SetHelp();

struct ButtonOptions {
  std::string which;
  AssignmentOptions assignment;
};
Command SetButton(const ButtonOptions& options);

struct MenuOptions {
  std::string ring;
  std::string wedge;
  AssignmentOptions assignment;
};
Command SetWedge(const MenuOptions& options);

struct MenuLimitOptions {
  std::string ring;
  std::string limit;
};
Command SetMenuLimit(const MenuLimitOptions& options);

Command SetCenterRightClick(const ValueChoice& choice);

struct CaptureOptions {
  std::optional<std::string> duration;
};
Command CaptureKeystrokes(const CaptureOptions& options);

struct ZoomOptions {
  std::array<std::optional<std::string>, 4> numbers;
  bool useDefault = false;
};
Command SetZoom(const ZoomOptions& options);

struct OpaqueOptions {
  std::string what;
  ValueChoice choice;
};
Command SetOpaque(const OpaqueOptions& options);
std::string OpaqueHelp();

struct RawOptions {
  std::string message;
};
Command SendRaw(const RawOptions& options);

}  // namespace tool::cli
