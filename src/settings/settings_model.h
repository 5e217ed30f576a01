// What the handlers of incoming values work on.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "settings/application_map.h"
#include "settings/callback_registrations.h"
#include "settings/local_values.h"

namespace KorvuISD {

struct SettingsModel {
  LocalValues values;
  ApplicationMap applications;
  CallbackRegistrations callbackRegistrations;
  std::atomic<int32_t> apiVersion{0};

  template <class Slot>
  bool Wants(Slot slot) const {
    return callbackRegistrations.Wants(slot);
  }

  template <class Slot, class... Arguments>
  void Fire(Slot slot, Arguments... arguments) const {
    callbackRegistrations.Fire(slot, arguments...);
  }
};

// Turns the value of one key into local values and callbacks. Runs under g_apiMutex. A value that
// does not convert leaves as an exception of ConvertNumber, before anything has changed; of an
// option list the items before the bad one have come in by then.
using SettingHandler = std::function<void(SettingsModel&, const std::wstring& value)>;

}  // namespace KorvuISD
