#include "settings-cli/event_text.h"

#include <gmock/gmock.h>

using namespace tool::cli;

namespace {

TEST(CliEventText, APenWithoutABatteryReadingSaysSo) {
  EXPECT_THAT(EventLine({Slot::kPenInfo, Pen{}}), testing::HasSubstr(" battery=unknown "));
}

TEST(CliEventText, ANameWithALineBreakStaysOnOneLine) {
  EXPECT_EQ(EventLine({Slot::kEraserLong, Function{1, L"a\nb\"c"}}),
            "OnEraserLong function=1 name=\"a\\nb\\\"c\"");
}

}  // namespace
