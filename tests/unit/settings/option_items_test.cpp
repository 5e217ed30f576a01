#include "settings/option_items.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

std::vector<std::pair<std::wstring, std::wstring>> ItemsOf(std::wstring_view list) {
  std::vector<std::pair<std::wstring, std::wstring>> all;
  OptionItems items(list);
  while (const auto item = items.Next()) all.emplace_back(item->first, item->second);
  return all;
}

TEST(OptionItems, AreFoundOneAfterAnother) {
  EXPECT_THAT(ItemsOf(LR"({"5":"Pan"},{"2":"Zoom"})"),
              ElementsAre(Pair(L"5", L"Pan"), Pair(L"2", L"Zoom")));
  EXPECT_THAT(ItemsOf(LR"({"5":"Pan"}{"2":"Zoom"})"),
              ElementsAre(Pair(L"5", L"Pan"), Pair(L"2", L"Zoom")));
}

TEST(OptionItems, WhatStandsBetweenThemIsSkipped) {
  EXPECT_THAT(ItemsOf(LR"(junk{"5":"Pan"} and {"2":"Zoom"} more)"),
              ElementsAre(Pair(L"5", L"Pan"), Pair(L"2", L"Zoom")));
}

TEST(OptionItems, MayBeEmptyTexts) {
  EXPECT_THAT(ItemsOf(LR"({"":""})"), ElementsAre(Pair(L"", L"")));
}

TEST(OptionItems, EndAtTheFirstMissingMark) {
  EXPECT_THAT(ItemsOf(L""), IsEmpty());
  EXPECT_THAT(ItemsOf(L"no marks"), IsEmpty());
  EXPECT_THAT(ItemsOf(LR"({"5":"Pan"},{"2)"), ElementsAre(Pair(L"5", L"Pan")));
  EXPECT_THAT(ItemsOf(LR"({"5":"Pan"},{"2":"Zoom)"), ElementsAre(Pair(L"5", L"Pan")));
  EXPECT_THAT(ItemsOf(LR"({"5":"Pan"},{")"), ElementsAre(Pair(L"5", L"Pan")));
}

TEST(OptionItems, MarksDoNotOverlap) {
  // The quotation mark that opens the item is not the one that begins the separator.
  EXPECT_THAT(ItemsOf(LR"({":"x"})"), IsEmpty());
  // Nor does the separator lend its last one to the closing mark.
  EXPECT_THAT(ItemsOf(LR"({"a":"}{"b":"c"})"), ElementsAre(Pair(L"a", LR"(}{"b":"c)")));
}

TEST(OptionItems, NothingIsUnescaped) {
  EXPECT_THAT(ItemsOf(LR"({"C:\\Apps\\a.exe":"A \"quoted\" name"})"),
              ElementsAre(Pair(LR"(C:\\Apps\\a.exe)", LR"(A \"quoted\" name)")));
}

}  // namespace
