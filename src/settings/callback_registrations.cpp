#include "settings/callback_registrations.h"

#include <array>
#include <cstring>

#include "settings/setting_keys.h"

namespace KorvuISD {
namespace {

// A record of an older API version ends after the slots of that version, so no more are read.
struct SlotGroup {
  int32_t apiVersion;
  size_t slotCount;  // of all slots up to this group
};

constexpr std::array kSlotGroups = {
    SlotGroup{1, 29}, SlotGroup{2, 31}, SlotGroup{4, 35}, SlotGroup{5, 36},
    SlotGroup{6, 38}, SlotGroup{7, 39}, SlotGroup{8, 41},
};

// Minimum and maximum for OnFirstRange, then for OnSecondRange.
constexpr std::array<int32_t, 4> kRangeLimits = {0, 6, -90, 90};

size_t OpenSlotCount(int32_t apiVersion) {
  size_t count = 23;
  for (const SlotGroup& group : kSlotGroups) {
    if (apiVersion >= group.apiVersion) count = group.slotCount;
  }
  return count;
}

}  // namespace

void CallbackRegistrations::Add(const KorvuISD_Callbacks* callbacks, void* context,
                                int32_t apiVersion) {
  if (!callbacks) {
    callbackRegistrations.erase(context);
    return;
  }
  KorvuISD_Callbacks& kept = callbackRegistrations[context];
  std::memcpy(&kept, callbacks, OpenSlotCount(apiVersion) * sizeof(void*));

  // Looked up for each call, since a callback may remove its own registration.
  const auto greet = [&](auto KorvuISD_Callbacks::*slot, auto... numbers) {
    const auto registration = callbackRegistrations.find(context);
    if (registration == callbackRegistrations.end()) return;
    const auto callback = registration->second.*slot;
    if (callback) callback(context, numbers...);
  };
  greet(&KorvuISD_Callbacks::OnWedgeCapacity, static_cast<uint64_t>(kWedgeCount));
  greet(&KorvuISD_Callbacks::OnFirstRange, kRangeLimits[0], kRangeLimits[1]);
  greet(&KorvuISD_Callbacks::OnSecondRange, kRangeLimits[2], kRangeLimits[3]);
}

}  // namespace KorvuISD
