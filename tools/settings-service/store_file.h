// The settings store on disk.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "settings-service/log.h"
#include "settings-service/settings_state.h"
#include "settings-service/store.h"

namespace tool::service {

class StoreFile {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // An empty name: nothing is kept.
  StoreFile(std::string name, SettingsState& state, Log& log);

  // Reads what the last run kept, and makes sure that this one can keep its own. Sets a damaged
  // store aside and says so. Throws ServiceFailure if the file cannot be used.
  void Load();

  // When SaveIfDue has something to do.
  std::optional<Time> NextDue() const { return due; }

  // A little after a change, so that a run of changes is written once.
  void SaveIfDue(Time now);

  // Saves what has changed. False if what is on disk is not what it should be.
  bool SaveNow();

 private:
  void Save();

  const std::string name;
  SettingsState& state;
  Log& log;
  UnknownSettings unknown;
  uint64_t savedRevision = 0;
  std::optional<Time> due;
};

}  // namespace tool::service
