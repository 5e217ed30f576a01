// Slots came with API versions, in groups: a registration takes the groups that its version opens.

#include "integration/settings/registration_fixture.h"

using namespace settings_test;

namespace {

struct Group {
  int32_t apiVersion;
  int slotCount;  // of all slots up to this version
};

void PrintTo(const Group& group, std::ostream* out) {
  *out << group.apiVersion;
}

class RegistrationAtApiVersion : public Registration, public testing::WithParamInterface<Group> {};

TEST_P(RegistrationAtApiVersion, TakesTheSlotsThatTheVersionOpens) {
  library.KorvuISD_SetAPIVersion(GetParam().apiVersion);
  Register(LowerContext());
  EXPECT_EQ(recorder.Calls(), Greeting(LowerContext()));
  ConnectQuietly();
  EXPECT_EQ(SlotsOf(FireEverySlot()), ValueSlots(0, GetParam().slotCount));
}

TEST_P(RegistrationAtApiVersion, LeavesTheSlotsAboveAsTheyWere) {
  library.KorvuISD_SetAPIVersion(9);
  Register(LowerContext());
  library.KorvuISD_SetAPIVersion(GetParam().apiVersion);
  recorder.Forget();
  RegisterOnly(LowerContext(), {});
  EXPECT_EQ(recorder.Calls(), kNothing);
  ConnectQuietly();
  EXPECT_EQ(SlotsOf(FireEverySlot()), ValueSlots(GetParam().slotCount, support::kSlotCount));
}

INSTANTIATE_TEST_SUITE_P(From, RegistrationAtApiVersion,
                         testing::Values(Group{-5, 23}, Group{0, 23}, Group{1, 29}, Group{2, 31},
                                         Group{3, 31}, Group{4, 35}, Group{5, 36}, Group{6, 38},
                                         Group{7, 39}, Group{8, 41}, Group{9, 41}),
                         [](const auto& test) {
                           const int32_t version = test.param.apiVersion;
                           return version < 0 ? std::string("Negative") : std::to_string(version);
                         });

}  // namespace
