#include "settings/callback_registrations.h"

#include <functional>
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "support/slot_groups.h"

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Contexts are places in this array, so that their order is known.
char g_places[8];

void* Place(size_t number) {
  return &g_places[number];
}
size_t NumberOf(void* context) {
  return static_cast<size_t>(static_cast<char*>(context) - g_places);
}

// Callbacks bear nothing but their context.
std::vector<size_t> g_called;
std::function<void(size_t)> g_whenCalled;

void KORVUISD_CALL NoteTilt(void* context, int32_t) {
  g_called.push_back(NumberOf(context));
  if (g_whenCalled) g_whenCalled(NumberOf(context));
}

struct Greeting {
  size_t number;
  int64_t first;
  int64_t second;
  bool operator==(const Greeting&) const = default;
};
std::vector<Greeting> g_greetings;

void KORVUISD_CALL NoteCapacity(void* context, uint64_t count) {
  g_greetings.push_back({NumberOf(context), static_cast<int64_t>(count), 0});
}
void KORVUISD_CALL NoteRange(void* context, int32_t minimum, int32_t maximum) {
  g_greetings.push_back({NumberOf(context), minimum, maximum});
}

class CallbackRegistrationsTest : public testing::Test {
 protected:
  CallbackRegistrationsTest() {
    g_called.clear();
    g_greetings.clear();
    g_whenCalled = nullptr;
    record.OnTiltSensitivity = NoteTilt;
  }

  void Add(size_t number) { registrations.Add(&record, Place(number), 9); }
  void Remove(size_t number) { registrations.Add(nullptr, Place(number), 9); }
  std::vector<size_t> Fire() {
    g_called.clear();
    registrations.Fire(&KorvuISD_Callbacks::OnTiltSensitivity, 5);
    return g_called;
  }

  CallbackRegistrations registrations;
  KorvuISD_Callbacks record{};
};

TEST_F(CallbackRegistrationsTest, AreCalledFromTheLowestContextToTheHighest) {
  for (const size_t number : {5u, 1u, 7u, 3u}) Add(number);
  EXPECT_THAT(Fire(), ElementsAre(1, 3, 5, 7));
}

TEST_F(CallbackRegistrationsTest, WithoutACallbackAreSkipped) {
  Add(1);
  record.OnTiltSensitivity = nullptr;
  Add(2);
  record.OnTiltSensitivity = NoteTilt;
  Add(3);
  EXPECT_THAT(Fire(), ElementsAre(1, 3));
}

TEST_F(CallbackRegistrationsTest, OfTheSameContextReplaceEachOther) {
  Add(1);
  Add(1);
  EXPECT_THAT(Fire(), ElementsAre(1));
  record.OnTiltSensitivity = nullptr;
  Add(1);
  EXPECT_THAT(Fire(), IsEmpty());
}

TEST_F(CallbackRegistrationsTest, AreTheirOwnCopies) {
  Add(1);
  record = {};
  EXPECT_THAT(Fire(), ElementsAre(1));
}

TEST_F(CallbackRegistrationsTest, OfNullAreRemoved) {
  Add(1);
  Add(2);
  Remove(1);
  EXPECT_THAT(Fire(), ElementsAre(2));
}

TEST_F(CallbackRegistrationsTest, AreGreetedWithTheFixedNumbersAlone) {
  record.OnWedgeCapacity = NoteCapacity;
  record.OnFirstRange = NoteRange;
  record.OnSecondRange = NoteRange;
  Add(1);
  Add(2);
  EXPECT_THAT(g_greetings,
              ElementsAre(Greeting{1, 16, 0}, Greeting{1, 0, 6}, Greeting{1, -90, 90},
                          Greeting{2, 16, 0}, Greeting{2, 0, 6}, Greeting{2, -90, 90}));
  g_greetings.clear();
  Remove(1);
  EXPECT_THAT(g_greetings, IsEmpty());
  EXPECT_THAT(g_called, IsEmpty());
}

TEST_F(CallbackRegistrationsTest, MayRemoveThemselvesWhileTheyAreCalled) {
  for (const size_t number : {1u, 2u, 3u}) Add(number);
  g_whenCalled = [this](size_t number) { Remove(number); };
  EXPECT_THAT(Fire(), ElementsAre(1, 2, 3));
  EXPECT_THAT(Fire(), IsEmpty());
}

TEST_F(CallbackRegistrationsTest, MayRemoveAndAddOthersWhileTheyAreCalled) {
  for (const size_t number : {1u, 3u, 5u}) Add(number);
  g_whenCalled = [this](size_t number) {
    if (number != 3) return;
    Remove(1);
    Remove(5);
    Add(2);
    Add(4);
  };
  EXPECT_THAT(Fire(), ElementsAre(1, 3, 4));
  EXPECT_THAT(Fire(), ElementsAre(2, 3, 4));
}

class CallbackRegistrationsAt : public CallbackRegistrationsTest,
                                public testing::WithParamInterface<support::SlotGroup> {};

TEST_P(CallbackRegistrationsAt, ReadNoMoreSlotsThanTheVersionOpens) {
  // On the heap, with not one slot more: an address sanitizer sees a read beyond.
  const auto slots = std::make_unique<void*[]>(GetParam().slotCount);
  registrations.Add(reinterpret_cast<const KorvuISD_Callbacks*>(slots.get()), Place(1),
                    GetParam().apiVersion);
  EXPECT_THAT(Fire(), IsEmpty());
}

TEST_P(CallbackRegistrationsAt, OpenValueCallbacksFromTheirVersionOn) {
  struct Slot {
    KorvuISD_ValueCallback KorvuISD_Callbacks::*member;
    size_t number;
  };
  KorvuISD_Callbacks all{};
  size_t open = 0;
  for (const Slot& slot : {Slot{&KorvuISD_Callbacks::OnPressureCurve, 7},
                           Slot{&KorvuISD_Callbacks::OnCenterRightClick, 11},
                           Slot{&KorvuISD_Callbacks::OnOpaqueEnabledGlobal, 23},
                           Slot{&KorvuISD_Callbacks::OnOpaqueMapping, 27},
                           Slot{&KorvuISD_Callbacks::OnPenDockPowerSaving, 33},
                           Slot{&KorvuISD_Callbacks::OnPenAlertEnabled, 34},
                           Slot{&KorvuISD_Callbacks::OnOpaqueInSetupGuide, 36},
                           Slot{&KorvuISD_Callbacks::OnOpaqueRememberDisplay, 37},
                           Slot{&KorvuISD_Callbacks::OnUndockedTimerWait, 38},
                           Slot{&KorvuISD_Callbacks::OnPenGesturesEnabled, 39},
                           Slot{&KorvuISD_Callbacks::OnMagnifierEnabled, 40}}) {
    all = {};
    all.*slot.member = NoteTilt;
    CallbackRegistrations fresh;
    fresh.Add(&all, Place(1), GetParam().apiVersion);
    g_called.clear();
    fresh.Fire(slot.member, 1);
    EXPECT_EQ(g_called.size(), slot.number < GetParam().slotCount ? 1u : 0u) << slot.number;
    open += g_called.size();
  }
  EXPECT_GE(open, 2u);
}

INSTANTIATE_TEST_SUITE_P(Version, CallbackRegistrationsAt, testing::ValuesIn(support::kSlotGroups),
                         support::NameOfGroup);

}  // namespace
