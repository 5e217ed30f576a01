// Two registrations of all that the soak looks at: what each wedge was last reported with, and how
// often.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "support/library.h"

namespace soak {

constexpr size_t kWedges = 8;
constexpr size_t kRegistrations = 2;

// The function codes of each wedge have a range of their own, since a callback does not say which
// wedge it is about.
constexpr int32_t kCodesPerWedge = 100'000'000;
constexpr int32_t FirstCode(size_t wedge) {
  return static_cast<int32_t>(wedge + 1) * kCodesPerWedge;
}

struct Registration {
  std::array<std::atomic<int32_t>, kWedges> lastCode{};
  std::atomic<int64_t> wedgeCalls{0};
  std::atomic<int64_t> keystrokeCalls{0};
};

// Registers both with the library, which keeps pointers to them.
void Register(const support::Library& library, std::array<Registration, kRegistrations>& both);

}  // namespace soak
