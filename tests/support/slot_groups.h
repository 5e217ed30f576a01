// Slots came with API versions, in groups: how many a version opens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace support {

struct SlotGroup {
  int32_t apiVersion;
  size_t slotCount;  // of all slots up to this version
};

inline constexpr SlotGroup kSlotGroups[] = {{-5, 23}, {0, 23}, {1, 29}, {2, 31}, {3, 31}, {4, 35},
                                            {5, 36},  {6, 38}, {7, 39}, {8, 41}, {9, 41}};

inline void PrintTo(const SlotGroup& group, std::ostream* out) {
  *out << group.apiVersion;
}

// The name of a test that is made for each group.
inline std::string NameOfGroup(const testing::TestParamInfo<SlotGroup>& test) {
  const int32_t version = test.param.apiVersion;
  return version < 0 ? "Negative" : std::to_string(version);
}

}  // namespace support
