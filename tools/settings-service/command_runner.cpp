#include "settings-service/command_runner.h"

#include <cstdint>
#include <variant>

#include <fmt/core.h>

#include "settings-service/device_scenes.h"
#include "settings-service/text.h"

namespace tool::service {

std::string CommandRunner::Run(const Command& command) {
  return std::visit([this](const auto& alternative) { return Do(alternative); }, command);
}

std::string CommandRunner::Do(const AnnounceCommand& command) {
  return Play({{command.key, command.value}});
}

std::string CommandRunner::Do(const SetCommand& command) {
  return Announce(*state.Set(command.key, command.value));
}

std::string CommandRunner::Do(const GetCommand& command) {
  control.Print(
      fmt::format("{} = {}\n", ToUtf8(command.key), Printable(*state.Value(command.key))));
  return {};
}

std::string CommandRunner::Do(const RawCommand& command) {
  control.SendToAll(command.text);
  return {};
}

std::string CommandRunner::Do(const BurstCommand& command) {
  for (uint32_t value = 1; value <= command.count; ++value) {
    Play({{command.key, std::to_wstring(value)}});
  }
  return {};
}

std::string CommandRunner::Do(const TypeCommand& command) {
  if (!state.IsCapturing()) return "type: no client captures keystrokes";
  return Announce(state.Capture(command.text));
}

std::string CommandRunner::Do(const PenCommand& command) {
  return Play(PenScene(state, command.serialNumber, command.penId, command.inProximity));
}

std::string CommandRunner::Do(const BatteryCommand& command) {
  return Play(BatteryScene(command.percent, command.isCharging));
}

std::string CommandRunner::Do(const ModuleCommand& command) {
  return Play(ModuleScene(state, command.isConnected, command.serialNumber));
}

std::string CommandRunner::Do(const DockCommand& command) {
  return Play(DockScene(command.isDocked));
}

std::string CommandRunner::Do(const DelayCommand& command) {
  faults.delay = command.delay;
  control.UseFaults(faults);
  return {};
}

std::string CommandRunner::Do(const AckCommand& command) {
  faults.protocolVersion = command.protocolVersion;
  control.UseFaults(faults);
  return {};
}

std::string CommandRunner::Do(const FaultCommand& command) {
  faults.*command.fault = command.isOn;
  control.UseFaults(faults);
  return {};
}

std::string CommandRunner::Do(const OfferCommand& command) {
  faults.offer = command.offer;
  control.UseFaults(faults);
  return {};
}

std::string CommandRunner::Do(const DropCommand&) {
  control.DropConnections();
  return {};
}

std::string CommandRunner::Do(const HelpCommand&) {
  control.Print(CommandHelp());
  return {};
}

std::string CommandRunner::Do(const QuitCommand&) {
  control.Quit();
  return {};
}

std::string CommandRunner::Announce(const Changes& changes) {
  for (const Change& change : changes) control.Announce(change);
  return {};
}

// Stores each value before it is announced: a client may ask for it at once.
std::string CommandRunner::Play(const Changes& scene) {
  for (const Change& change : scene) {
    state.Store(change.key, change.value);
    control.Announce(change);
  }
  return {};
}

}  // namespace tool::service
