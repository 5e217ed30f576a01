// The application's callbacks: one record for each context pointer.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>

#include "KorvuTabletSettingsAPI.h"

namespace KorvuISD {

// Used under g_apiMutex only. Callbacks may register and remove registrations while they run, so
// nothing here holds on to a registration across a call.
class CallbackRegistrations {
 public:
  // Copies the slots that `apiVersion` opens and reports the fixed numbers to this registration.
  // Null removes it.
  void Add(const KorvuISD_Callbacks* callbacks, void* context, int32_t apiVersion);

  // Has any registration this slot?
  template <class Slot>
  bool Wants(Slot slot) const {
    return std::ranges::any_of(callbackRegistrations, [=](const auto& registration) {
      return registration.second.*slot != nullptr;
    });
  }

  // Calls `slot` of every registration that has it, from the lowest context to the highest.
  template <class... Parameters, class... Arguments>
  void Fire(void (KORVUISD_CALL* KorvuISD_Callbacks::*slot)(void*, Parameters...),
            Arguments... arguments) const {
    for (auto next = callbackRegistrations.begin(); next != callbackRegistrations.end();) {
      void* const context = next->first;
      if (const auto callback = next->second.*slot) callback(context, arguments...);
      next = callbackRegistrations.upper_bound(context);
    }
  }

 private:
  std::map<void*, KorvuISD_Callbacks> callbackRegistrations;
};

}  // namespace KorvuISD
