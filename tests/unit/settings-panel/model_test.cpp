#include "model/model.h"

#include <gmock/gmock.h>

using namespace tool::panel;
using namespace std::chrono_literals;

namespace {

// Keys by their numbers in the service's table.
constexpr size_t kTilt = 115;
constexpr size_t kUpperButton = 25;
constexpr size_t kUpperHoverClick = 29;
constexpr size_t kLowerButton = 30;
constexpr size_t kSecondWedge = 50;
constexpr size_t kZoomMap = 125;

TEST(PanelModel, UntilItIsToldAValueIsWhatTheLibraryBeginsWith) {
  const Model model;
  EXPECT_EQ(model.Number(kTilt), 0);
  EXPECT_EQ(model.AssignmentOf(kUpperButton).function.name, L"");
  EXPECT_FALSE(model.IsSupported(0));
  EXPECT_TRUE(model.OptionsOf(OptionList::kApplication).empty());
}

TEST(PanelModel, WhatIsWantedIsShownWhileItIsPendingAndThenWhatIsStored) {
  Model model;
  model.Apply(Number{kTilt, 12});
  model.Want(kTilt, L"20", Clock::time_point{});
  EXPECT_EQ(model.Number(kTilt), 20);
  EXPECT_EQ(model.ToldNumber(kTilt), 12);
  model.OnTime(Clock::time_point{} + 3s);
  EXPECT_EQ(model.Number(kTilt), 12);
}

TEST(PanelModel, AnAnswerGoesToItsButtonOrWedge) {
  Model model;
  model.Apply(Answer{kSecondWedge, L"8"});
  model.Apply(Answer{kSecondWedge + 1, L"C:\\a.exe"});
  model.Apply(Answer{kSecondWedge + 2, L"Keys"});
  model.Apply(Answer{kSecondWedge + 3, L"Ctrl+A"});
  model.Apply(Answer{kLowerButton + 3, L"Ctrl+B"});
  const Assignment& wedge = model.AssignmentOf(kSecondWedge);
  EXPECT_EQ(wedge.function, (Function{8, L"Keys"}));
  EXPECT_EQ(wedge.application, L"C:\\a.exe");
  EXPECT_EQ(wedge.keystrokes, L"Ctrl+A");
  EXPECT_EQ(model.AssignmentOf(kLowerButton).keystrokes, L"Ctrl+B");
  EXPECT_EQ(model.AssignmentOf(kUpperButton).keystrokes, std::nullopt);
}

TEST(PanelModel, AnAnswerForAKeyThatIsNoButtonsIsNoHarm) {
  Model model;
  model.Apply(Answer{kUpperHoverClick, L"1"});
  model.Apply(Answer{9999, L"1"});
  EXPECT_EQ(model.AssignmentOf(kUpperButton).function.code, 0);
}

TEST(PanelModel, TheAnswerThatNamesTheFunctionIsAReceipt) {
  Model model;
  model.Want(kUpperButton, L"8", Clock::time_point{});
  model.Apply(Answer{kUpperButton, L"8"});
  EXPECT_FALSE(model.GetChanges().ArePending());
}

TEST(PanelModel, ANewFunctionInAnAnswerForgetsTheNameOfTheOldOne) {
  Model model;
  model.Apply(Button{kUpperButton, 3, L"Right Click"});
  model.Apply(Answer{kUpperButton, L"3"});
  EXPECT_EQ(model.AssignmentOf(kUpperButton).function.name, L"Right Click");
  model.Apply(Answer{kUpperButton, L"0"});
  EXPECT_EQ(model.AssignmentOf(kUpperButton).function, (Function{0, L""}));
}

TEST(PanelModel, AnEmptyOrBrokenFunctionAnswerKeepsTheFunction) {
  Model model;
  model.Apply(Button{kUpperButton, 3, L"Right Click"});
  for (const wchar_t* text : {L"", L"abc", L"99999999999999999999"}) {
    model.Apply(Answer{kUpperButton, text});
    EXPECT_EQ(model.AssignmentOf(kUpperButton).function.code, 3) << text;
  }
}

TEST(PanelModel, AZoomMapOfSeveralAreasIsNoReceiptForOne) {
  Model model;
  model.Want(kZoomMap, L"0, 0, 10, 10", Clock::time_point{});
  model.Apply(ZoomMap{{{0, 0, 10, 10}, {1, 1, 2, 2}}});
  EXPECT_TRUE(model.GetChanges().ArePending());
  model.Apply(ZoomMap{{{0, 0, 10, 10}}});
  EXPECT_FALSE(model.GetChanges().ArePending());
}

TEST(PanelModel, AllPensShareTheDock) {
  Model model;
  model.Apply(Pen{.serialNumber = L"A"});
  model.Apply(Pen{.serialNumber = L"B", .isDocked = true});
  EXPECT_TRUE(model.Pens().at(L"A").isDocked);
}

TEST(PanelModel, APenWithoutSerialNumberIsTheOneThatIsNamedNext) {
  Model model;
  model.Apply(Pen{.batteryStatus = 40});
  model.Apply(Pen{.serialNumber = L"A", .batteryStatus = 40});
  EXPECT_EQ(model.Pens().size(), 1u);
}

}  // namespace
