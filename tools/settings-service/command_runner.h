// Carries commands out.
#pragma once

#include <string>
#include <string_view>

#include "settings-service/commands.h"
#include "settings-service/faults.h"
#include "settings-service/settings_state.h"

namespace tool::service {

// What commands do to the running service.
class ServiceControl {
 public:
  virtual ~ServiceControl() = default;
  virtual void Announce(const Change& change) = 0;
  virtual void SendToAll(std::wstring message) = 0;
  virtual void DropConnections() = 0;
  virtual void UseFaults(const Faults& faults) = 0;
  virtual void Print(std::string_view text) = 0;
  virtual void Quit() = 0;
};

class CommandRunner {
 public:
  CommandRunner(SettingsState& state, Faults& faults, ServiceControl& control)
      : state(state), faults(faults), control(control) {}

  // Returns what kept the command from being carried out; empty if nothing did.
  std::string Run(const Command& command);

 private:
  std::string Do(const AnnounceCommand& command);
  std::string Do(const SetCommand& command);
  std::string Do(const GetCommand& command);
  std::string Do(const RawCommand& command);
  std::string Do(const BurstCommand& command);
  std::string Do(const TypeCommand& command);
  std::string Do(const PenCommand& command);
  std::string Do(const BatteryCommand& command);
  std::string Do(const ModuleCommand& command);
  std::string Do(const DockCommand& command);
  std::string Do(const DelayCommand& command);
  std::string Do(const AckCommand& command);
  std::string Do(const FaultCommand& command);
  std::string Do(const OfferCommand& command);
  std::string Do(const DropCommand& command);
  std::string Do(const HelpCommand& command);
  std::string Do(const QuitCommand& command);

  std::string Announce(const Changes& changes);
  std::string Play(const Changes& scene);

  SettingsState& state;
  Faults& faults;
  ServiceControl& control;
};

}  // namespace tool::service
