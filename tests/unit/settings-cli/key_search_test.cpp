#include "settings-cli/key_search.h"

#include <gmock/gmock.h>

#include "settings-cli/exit_code.h"
#include "shared/keys.h"

using namespace tool;
using namespace tool::cli;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::ThrowsMessage;

namespace {

TEST(CliKeySearch, AWholeKeyMayHaveSingleOrDoubledBackslashes) {
  for (size_t key = 0; key < kKeyCount; ++key) {
    const std::string single(kKeys[key]);
    std::string doubled;
    for (const char letter : single) doubled += letter == '\\' ? "\\\\" : std::string(1, letter);
    EXPECT_EQ(FindKey(single), key);
    EXPECT_EQ(FindKey(doubled), key);
  }
}

TEST(CliKeySearch, AUniqueEndIsEnough) {
  EXPECT_EQ(FindKey("TiltSensitivity"), 115u);
  EXPECT_EQ(FindKey("tiltsensitivity"), 115u);
  EXPECT_EQ(FindKey("ButtonUpperSide\\HoverClick"), 29u);
  EXPECT_EQ(FindKey("buttonlowerside\\\\hoverclick"), 34u);
}

TEST(CliKeySearch, AnEndBeginsWhereAComponentBegins) {
  EXPECT_THROW(FindKey("Sensitivity"), UsageError);
  EXPECT_THROW(FindKey("\\TiltSensitivity"), UsageError);
}

TEST(CliKeySearch, AnEndOfSeveralKeysNamesThem) {
  EXPECT_THAT([] { FindKey("HoverClick"); },
              ThrowsMessage<UsageError>(AllOf(HasSubstr("means 2 keys"),
                                              HasSubstr("ButtonUpperSide\\HoverClick"),
                                              HasSubstr("ButtonLowerSide\\HoverClick"))));
  EXPECT_THAT([] { FindKey("ButtonFunction"); },
              ThrowsMessage<UsageError>(AllOf(HasSubstr("means 24 keys"), HasSubstr("16 more"))));
}

TEST(CliKeySearch, AMisspeltKeyNamesWhatIsNear) {
  EXPECT_THAT([] { FindKey("TiltSensitivty"); },
              ThrowsMessage<UsageError>(
                  AllOf(HasSubstr("no key 'TiltSensitivty'"), HasSubstr("\\TiltSensitivity"))));
  EXPECT_THAT([] { FindKey("ComponentsDriver\\Wrong\\PenIDD"); },
              ThrowsMessage<UsageError>(HasSubstr("PenTransducer\\PenID")));
}

TEST(CliKeySearch, WhatIsNearNothingSaysWhereAllAre) {
  EXPECT_THAT(
      [] { FindKey("qqqqqqqqqqqq"); },
      ThrowsMessage<UsageError>(AllOf(HasSubstr("korvu-settings list"), Not(HasSubstr("Near")))));
  EXPECT_THROW(FindKey(""), UsageError);
  EXPECT_THROW(FindKey("\\"), UsageError);
}

TEST(CliKeySearch, TheNearestKeyComesFirst) {
  EXPECT_EQ(NearestKeys("PresureCurve", 3).front(), 116u);
  EXPECT_EQ(NearestKeys("battery", 2).size(), 2u);
}

}  // namespace
