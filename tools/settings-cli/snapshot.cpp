#include "settings-cli/snapshot.h"

#include "KorvuTabletSettingsAPI.h"
#include "shared/pens.h"

namespace tool::cli {

void Snapshot::Apply(const Event& event) {
  if (const auto* pen = std::get_if<Pen>(&event.payload)) {
    NotePen(pens, *pen);
  } else if (const auto* count = std::get_if<RingCount>(&event.payload)) {
    if (count->ring == 0 || count->ring == 1) {
      ringCounts.at(static_cast<size_t>(count->ring)) = count->count;
    }
  } else if (const auto* feature = std::get_if<Feature>(&event.payload)) {
    if (feature->feature == KORVUISD_FEATURE_DOCKABLE ||
        feature->feature == KORVUISD_FEATURE_OPAQUE_MODE) {
      features.at(static_cast<size_t>(feature->feature)) = feature->isSupported;
    }
  } else {
    last.insert_or_assign(event.slot, event.payload);
  }
}

}  // namespace tool::cli
