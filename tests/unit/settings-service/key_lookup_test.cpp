#include "settings-service/key_lookup.h"

#include <string>

#include <gtest/gtest.h>

#include "settings-service/key_forms.h"
#include "unit/settings-service/tilt_key.h"

namespace tool::service {
namespace {

std::wstring Found(std::wstring_view typed) {
  const auto found = FindKey(Catalogue::BuiltIn(), typed);
  const auto* key = std::get_if<std::wstring>(&found);
  return key ? *key : L"(unknown)";
}

std::string Message(std::wstring_view typed) {
  const auto found = FindKey(Catalogue::BuiltIn(), typed);
  const auto* unknown = std::get_if<UnknownKey>(&found);
  return unknown ? unknown->message : "(found)";
}

TEST(ServiceKeyLookup, TakesAWholeKeyInEitherForm) {
  EXPECT_EQ(Found(kTilt), kTilt);
  EXPECT_EQ(Found(L"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity"), kTilt);
}

TEST(ServiceKeyLookup, TakesTheLastPartsWhereNoOtherKeyEndsInThem) {
  EXPECT_EQ(Found(L"TiltSensitivity"), kTilt);
  EXPECT_EQ(Found(L"PenTransducer\\TiltSensitivity"), kTilt);
  EXPECT_EQ(Found(L"ButtonUpperSide\\\\HoverClick"),
            L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\ButtonUpperSide\\\\HoverClick");
}

TEST(ServiceKeyLookup, WholeKeyWinsOverKeysThatEndInIt) {
  EXPECT_EQ(Found(L"RunAppOptionsList"), L"RunAppOptionsList");
}

TEST(ServiceKeyLookup, DoesNotTakeAPieceOfAPart) {
  EXPECT_EQ(Found(L"Sensitivity"), L"(unknown)");
  EXPECT_EQ(Found(L"tiltsensitivity"), L"(unknown)");
}

TEST(ServiceKeyLookup, TellsTheCandidatesOfAnAmbiguousKey) {
  const std::string message = Message(L"HoverClick");
  EXPECT_NE(message.find("ButtonUpperSide\\HoverClick"), std::string::npos) << message;
  EXPECT_NE(message.find("ButtonLowerSide\\HoverClick"), std::string::npos) << message;
  EXPECT_NE(Message(L"LastEPXSerialNumber").find("3 keys"), std::string::npos);
}

TEST(ServiceKeyLookup, TellsAMissingKeyFromAnUnknownOne) {
  EXPECT_EQ(Message(L""), "a key is missing");
  EXPECT_EQ(Message(L"Nope"), "no key \"Nope\"");
}

TEST(ServiceKeyForms, GoBothWays) {
  EXPECT_EQ(MessageKey(L"a\\b\\c"), L"a\\\\b\\\\c");
  EXPECT_EQ(MessageKey(L"a\\\\b\\c"), L"a\\\\b\\\\c");
  EXPECT_EQ(PlainKey(L"a\\\\b\\\\c"), L"a\\b\\c");
  EXPECT_EQ(PlainKey(MessageKey(L"RunAppOptionsList")), L"RunAppOptionsList");
}

}  // namespace
}  // namespace tool::service
