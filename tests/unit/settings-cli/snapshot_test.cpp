#include "settings-cli/snapshot.h"

#include <gmock/gmock.h>

using namespace tool::cli;

namespace {

Pen PenWith(std::wstring serialNumber, bool isDocked = false) {
  Pen pen;
  pen.serialNumber = std::move(serialNumber);
  pen.isDocked = isDocked;
  return pen;
}

TEST(CliSnapshot, TheLastValueOfASlotCounts) {
  Snapshot snapshot;
  EXPECT_EQ(snapshot.Last<Number>(Slot::kTiltSensitivity), nullptr);
  snapshot.Apply({Slot::kTiltSensitivity, Number{2}});
  snapshot.Apply({Slot::kTiltSensitivity, Number{3}});
  snapshot.Apply({Slot::kPressureCurve, Number{9}});
  EXPECT_EQ(snapshot.Last<Number>(Slot::kTiltSensitivity)->value, 3);
}

TEST(CliSnapshot, PensAreKeptBySerialNumber) {
  Snapshot snapshot;
  snapshot.Apply({Slot::kPenInfo, PenWith(L"A")});
  snapshot.Apply({Slot::kPenInfo, PenWith(L"B")});
  snapshot.Apply({Slot::kPenInfo, PenWith(L"A")});
  EXPECT_EQ(snapshot.Pens().size(), 2u);
}

TEST(CliSnapshot, APenGetsItsSerialNumberLater) {
  Snapshot snapshot;
  snapshot.Apply({Slot::kPenInfo, PenWith(L"")});
  snapshot.Apply({Slot::kPenInfo, PenWith(L"A")});
  EXPECT_EQ(snapshot.Pens().size(), 1u);
  EXPECT_EQ(snapshot.Pens().begin()->first, L"A");
}

TEST(CliSnapshot, TheDockIsTheSameForAllPens) {
  Snapshot snapshot;
  snapshot.Apply({Slot::kPenInfo, PenWith(L"A")});
  snapshot.Apply({Slot::kPenInfo, PenWith(L"B", true)});
  EXPECT_TRUE(snapshot.Pens().at(L"A").isDocked);
}

TEST(CliSnapshot, ANewPenThatKnowsNothingOfTheDockLeavesTheOthersDocked) {
  Snapshot snapshot;
  snapshot.Apply({Slot::kPenInfo, PenWith(L"A", true)});
  snapshot.Apply({Slot::kPenInfo, PenWith(L"B")});
  EXPECT_TRUE(snapshot.Pens().at(L"A").isDocked);
  snapshot.Apply({Slot::kPenInfo, PenWith(L"A")});
  EXPECT_FALSE(snapshot.Pens().at(L"A").isDocked);
}

TEST(CliSnapshot, RingsAndFeaturesAreKeptApart) {
  Snapshot snapshot;
  EXPECT_FALSE(snapshot.RingCountOf(0) || snapshot.IsSupported(0));
  snapshot.Apply({Slot::kRadialZonesCount, RingCount{0, 8}});
  snapshot.Apply({Slot::kRadialZonesCount, RingCount{1, 4}});
  snapshot.Apply({Slot::kFeatureSupport, Feature{1, true}});
  snapshot.Apply({Slot::kFeatureSupport, Feature{0, false}});
  EXPECT_EQ(snapshot.RingCountOf(0), 8);
  EXPECT_EQ(snapshot.RingCountOf(1), 4);
  EXPECT_EQ(snapshot.IsSupported(0), false);
  EXPECT_EQ(snapshot.IsSupported(1), true);
}

TEST(CliSnapshot, RingsAndFeaturesOfALaterLibraryAreSkipped) {
  Snapshot snapshot;
  snapshot.Apply({Slot::kRadialZonesCount, RingCount{2, 8}});
  snapshot.Apply({Slot::kRadialZonesCount, RingCount{-1, 8}});
  snapshot.Apply({Slot::kFeatureSupport, Feature{2, true}});
  EXPECT_FALSE(snapshot.RingCountOf(1) || snapshot.IsSupported(1));
}

}  // namespace
