// Slots came with API versions, in groups: a registration takes the groups that its version opens.

#include "support/slot_groups.h"

#include "integration/settings/registration_fixture.h"

using namespace settings_test;

namespace {

class RegistrationAtApiVersion : public Registration,
                                 public testing::WithParamInterface<support::SlotGroup> {
 protected:
  int SlotCount() const { return static_cast<int>(GetParam().slotCount); }
};

TEST_P(RegistrationAtApiVersion, TakesTheSlotsThatTheVersionOpens) {
  library.KorvuISD_SetAPIVersion(GetParam().apiVersion);
  Register(LowerContext());
  EXPECT_EQ(recorder.Calls(), Greeting(LowerContext()));
  ConnectQuietly();
  EXPECT_EQ(SlotsOf(FireEverySlot()), ValueSlots(0, SlotCount()));
}

TEST_P(RegistrationAtApiVersion, LeavesTheSlotsAboveAsTheyWere) {
  library.KorvuISD_SetAPIVersion(9);
  Register(LowerContext());
  library.KorvuISD_SetAPIVersion(GetParam().apiVersion);
  recorder.Forget();
  RegisterOnly(LowerContext(), {});
  EXPECT_EQ(recorder.Calls(), kNothing);
  ConnectQuietly();
  EXPECT_EQ(SlotsOf(FireEverySlot()), ValueSlots(SlotCount(), support::kSlotCount));
}

INSTANTIATE_TEST_SUITE_P(From, RegistrationAtApiVersion, testing::ValuesIn(support::kSlotGroups),
                         support::NameOfGroup);

}  // namespace
