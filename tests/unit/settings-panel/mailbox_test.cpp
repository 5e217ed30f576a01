#include "model/mailbox.h"

#include <thread>

#include <gmock/gmock.h>

using namespace tool::panel;

namespace {

const Number& NumberAt(const std::vector<Letter>& letters, size_t at) {
  return std::get<Number>(letters.at(at));
}

TEST(PanelMailbox, OneWakeIsForAllLettersUntilItIsRearmed) {
  Mailbox mailbox;
  int wakes = 0;
  mailbox.SetWake([&] { ++wakes; });
  mailbox.Put(Number{1, 1});
  mailbox.Put(Number{2, 1});
  EXPECT_EQ(wakes, 1);
  EXPECT_EQ(mailbox.Take().size(), 2u);
  mailbox.Put(Number{1, 2});
  EXPECT_EQ(wakes, 1);
  EXPECT_FALSE(mailbox.Rearm());
  EXPECT_EQ(mailbox.Take().size(), 1u);
  EXPECT_TRUE(mailbox.Rearm());
  mailbox.Put(Number{1, 3});
  EXPECT_EQ(wakes, 2);
}

TEST(PanelMailbox, LettersFromBeforeThereWasSomeoneToWakeAreNotForgotten) {
  Mailbox mailbox;
  mailbox.Put(Number{1, 1});
  int wakes = 0;
  mailbox.SetWake([&] { ++wakes; });
  EXPECT_EQ(wakes, 1);
}

TEST(PanelMailbox, OfABurstTheLastValuesAreKeptInTheirOrder) {
  Mailbox mailbox;
  mailbox.Put(Number{2, -1});
  for (int32_t value = 1; value <= 10'000; ++value) mailbox.Put(Number{1, value});
  const std::vector<Letter> letters = mailbox.Take();
  ASSERT_EQ(letters.size(), 65u);
  EXPECT_EQ(NumberAt(letters, 0).key, 2u);
  for (int32_t at = 1; at <= 64; ++at) {
    EXPECT_EQ(NumberAt(letters, static_cast<size_t>(at)).value, 10'000 - 64 + at);
  }
}

TEST(PanelMailbox, AListTakesThePlaceOfTheOneBeforeIt) {
  Mailbox mailbox;
  mailbox.Put(Options{OptionList::kWedge, {{1, L"one"}}});
  mailbox.Put(Options{OptionList::kUndock, {{2, L"two"}}});
  mailbox.Put(Options{OptionList::kWedge, {{3, L"three"}}});
  const std::vector<Letter> letters = mailbox.Take();
  ASSERT_EQ(letters.size(), 2u);
  EXPECT_EQ(std::get<Options>(letters[1]).functions.front().name, L"three");
}

TEST(PanelMailbox, PensAreToldApart) {
  Mailbox mailbox;
  mailbox.Put(Pen{.serialNumber = L"A"});
  mailbox.Put(Pen{.serialNumber = L"B"});
  mailbox.Put(Pen{.serialNumber = L"A", .batteryStatus = 5});
  EXPECT_EQ(mailbox.Take().size(), 2u);
}

TEST(PanelMailbox, NothingIsLostBetweenThreads) {
  Mailbox mailbox;
  std::thread writer([&] {
    for (size_t key = 0; key < 2000; ++key) mailbox.Put(Number{key, 1});
  });
  size_t count = 0;
  while (count < 2000) count += mailbox.Take().size();
  writer.join();
  EXPECT_EQ(count, 2000u);
}

}  // namespace
