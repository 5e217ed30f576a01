#include "settings-cli/snapshot.h"

namespace tool::cli {

void Snapshot::Apply(const Event& event) {
  if (const auto* pen = std::get_if<Pen>(&event.payload)) {
    ApplyPen(*pen);
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

void Snapshot::ApplyPen(const Pen& pen) {
  // A pen may be told of before its serial number is known; it is the same pen afterwards.
  if (!pen.serialNumber.empty()) pens.erase(std::wstring());
  const auto known = pens.find(pen.serialNumber);
  const bool wasDocked = known != pens.end() && known->second.isDocked;
  pens.insert_or_assign(pen.serialNumber, pen);
  // The dock belongs to the tablet: where its state changes, all pens share it, and one of them
  // reports it. A pen that is new may know nothing of it yet.
  if (pen.isDocked == wasDocked) return;
  for (auto& [serialNumber, other] : pens) other.isDocked = pen.isDocked;
}

}  // namespace tool::cli
