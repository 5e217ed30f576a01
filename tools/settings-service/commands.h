// The commands of standard input and of scripts.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "settings-service/catalogue.h"
#include "settings-service/faults.h"

namespace tool::service {

struct AnnounceCommand {
  std::wstring key;
  std::wstring value;
};

struct SetCommand {
  std::wstring key;
  std::wstring value;
};

struct GetCommand {
  std::wstring key;
};

struct RawCommand {
  std::wstring text;
};

struct BurstCommand {
  std::wstring key;
  uint32_t count;
};

struct TypeCommand {
  std::wstring text;
};

struct PenCommand {
  std::wstring serialNumber;
  std::wstring penId;
  bool inProximity;
};

struct BatteryCommand {
  int percent;
  std::optional<bool> isCharging;
};

struct ModuleCommand {
  bool isConnected;
  std::wstring serialNumber;  // empty: that of the pen at hand
};

struct DockCommand {
  bool isDocked;
};

struct DelayCommand {
  std::chrono::milliseconds delay;
};

struct AckCommand {
  std::wstring protocolVersion;
};

struct FaultCommand {
  bool Faults::*fault;
  bool isOn;
};

struct OfferCommand {
  Offer offer;
};

struct DropCommand {};
struct HelpCommand {};
struct QuitCommand {};

using Command =
    std::variant<AnnounceCommand, SetCommand, GetCommand, RawCommand, BurstCommand, TypeCommand,
                 PenCommand, BatteryCommand, ModuleCommand, DockCommand, DelayCommand, AckCommand,
                 FaultCommand, OfferCommand, DropCommand, HelpCommand, QuitCommand>;

struct CommandError {
  std::string message;
};

using ParsedCommand = std::variant<Command, CommandError>;

// `line` is UTF-8, without its line end, and not blank.
ParsedCommand ParseCommand(std::string_view line, const Catalogue& catalogue);

// What `help` prints.
std::string CommandHelp();

}  // namespace tool::service
