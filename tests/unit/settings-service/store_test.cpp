#include "settings-service/store.h"

#include <string>

#include <gmock/gmock.h>

#include "service_printers.h"
#include "unit/settings-service/tilt_key.h"

namespace tool::service {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

const std::wstring kPath = L"ComponentsDriver\\\\OpaqueSettings\\\\OpaqueDisplayPath";

class ServiceStore : public testing::Test {
 protected:
  SettingsState state{Catalogue::BuiltIn()};
  SettingsState other{Catalogue::BuiltIn()};
};

TEST_F(ServiceStore, ValuesComeBack) {
  state.Set(kTilt, L"77");
  state.Set(kPath, L"\\\\.\\DISPLAY1 \"\u00E4\"\n");
  state.Set(L"SideSwitchOptionsList", L"{\"5\":\"Pan\"}");
  state.Store(L"RunAppOptionsList", L"");
  const auto unknown = ReadStore(WriteStore(state, {}), other);
  EXPECT_THAT(unknown, IsEmpty());
  EXPECT_EQ(other.DifferencesFromDefaults(), state.DifferencesFromDefaults());
  EXPECT_EQ(*other.Value(L"RunAppOptionsList"), L"");
}

TEST_F(ServiceStore, HoldsNoDefaults) {
  EXPECT_THAT(WriteStore(state, {}), Not(HasSubstr("TiltSensitivity")));
  state.Set(kTilt, L"77");
  EXPECT_THAT(WriteStore(state, {}), HasSubstr("TiltSensitivity"));
}

TEST_F(ServiceStore, OwnNameOfAButtonOutlivesItsFunction) {
  const std::wstring name =
      L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\ButtonUpperSide\\\\ButtonSingle\\\\"
      L"ButtonFunctionName";
  state.Set(name.substr(0, name.size() - 4), L"5");
  state.Set(name, L"Mine");
  ReadStore(WriteStore(state, {}), other);
  EXPECT_EQ(*other.Value(name), L"Mine");
}

TEST_F(ServiceStore, KeysHaveSingleBackslashes) {
  ReadStore(R"({"format":"korvu-settings-store-1","settings":{
      "ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity":"9"}})",
            state);
  EXPECT_EQ(*state.Value(kTilt), L"9");
}

TEST_F(ServiceStore, UnknownSettingsAreKept) {
  const auto unknown =
      ReadStore(R"({"format":"korvu-settings-store-1","settings":{"Future\\Key":"v"}})", state);
  EXPECT_THAT(unknown, ElementsAre(Pair("Future\\Key", "v")));
  const auto again = ReadStore(WriteStore(state, unknown), other);
  EXPECT_EQ(again, unknown);
}

TEST_F(ServiceStore, TextThatIsNoUtf16IsStoredAsFarAsItIs) {
  state.Set(kPath, std::wstring{L'a', static_cast<wchar_t>(0xD800), L'b'});
  ReadStore(WriteStore(state, {}), other);
  EXPECT_EQ(*other.Value(kPath), L"a\uFFFDb");
}

class DamagedStoreText : public testing::TestWithParam<const char*> {};

TEST_P(DamagedStoreText, IsRejectedAndChangesNothing) {
  SettingsState state(Catalogue::BuiltIn());
  EXPECT_THROW(ReadStore(GetParam(), state), DamagedStore);
  EXPECT_THAT(state.DifferencesFromDefaults(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    ServiceStore, DamagedStoreText,
    testing::Values(
        "", "{", "null", "[]", "\"x\"", "{}", "\xFF\xFE{", R"({"format":"korvu-settings-store-2"})",
        R"({"format":1,"settings":{}})", R"({"format":"korvu-settings-store-1"})",
        R"({"format":"korvu-settings-store-1","settings":[]})",
        R"({"format":"korvu-settings-store-1","settings":{"RunAppOptionsList":"x","b":1}})",
        R"({"format":"korvu-settings-store-1","settings":{"RunAppOptionsList":"x"})",
        R"({"format":"korvu-settings-store-1","settings":{}} trailing)"));

TEST_F(ServiceStore, EveryPrefixOfAStoreIsDamaged) {
  state.Set(kTilt, L"77");
  const std::string whole = WriteStore(state, {});
  // The last character is the line end, which is not missed.
  for (size_t length = 0; length + 1 < whole.size(); ++length) {
    EXPECT_THROW(ReadStore(whole.substr(0, length), other), DamagedStore) << length;
  }
}

}  // namespace
}  // namespace tool::service
