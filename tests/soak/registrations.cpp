#include "soak/registrations.h"

namespace soak {
namespace {

void KORVUISD_CALL OnWedge(void* context, int32_t, const ButtonRecord* wedge) {
  auto& registration = *static_cast<Registration*>(context);
  ++registration.wedgeCalls;
  if (wedge->function < FirstCode(0)) return;  // from before the soak
  const auto index = static_cast<size_t>(wedge->function / kCodesPerWedge - 1);
  if (index < kWedges) registration.lastCode.at(index) = wedge->function;
}

void KORVUISD_CALL OnKeystrokes(void* context, const wchar_t*, uint64_t) {
  ++static_cast<Registration*>(context)->keystrokeCalls;
}

}  // namespace

void Register(const support::Library& library, std::array<Registration, kRegistrations>& both) {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnRadialWedgeEx = &OnWedge;
  callbacks.OnCapturedKeystrokes = &OnKeystrokes;
  for (Registration& registration : both) {
    library.KorvuISD_RegisterCallbacks(&callbacks, &registration);
  }
}

}  // namespace soak
