// The values as the callbacks have told them so far. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <variant>

#include "settings-cli/events.h"

namespace tool::cli {

class Snapshot {
 public:
  void Apply(const Event& event);

  // What the slot's last callback told; null if none came. Not for the slots of pens, rings and
  // features, whose callbacks tell of several things.
  template <class T>
  const T* Last(Slot slot) const {
    const auto found = last.find(slot);
    return found == last.end() ? nullptr : std::get_if<T>(&found->second);
  }

  // By serial number.
  const std::map<std::wstring, Pen>& Pens() const { return pens; }
  std::optional<int> RingCountOf(size_t ring) const { return ringCounts.at(ring); }
  std::optional<bool> IsSupported(size_t feature) const { return features.at(feature); }

 private:
  std::map<Slot, Payload> last;
  std::map<std::wstring, Pen> pens;
  std::array<std::optional<int>, 2> ringCounts;
  std::array<std::optional<bool>, 2> features;
};

}  // namespace tool::cli
