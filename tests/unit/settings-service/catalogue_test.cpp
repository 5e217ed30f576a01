#include "settings-service/catalogue.h"

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "settings-service/text.h"
#include "settings/option_items.h"
#include "support/expected_settings.h"

namespace tool::service {
namespace {

using testing::IsSupersetOf;

std::vector<std::wstring> FirstTexts(const std::wstring& items) {
  std::vector<std::wstring> texts;
  KorvuISD::OptionItems rest(items);
  while (const auto item = rest.Next()) texts.emplace_back(item->first);
  return texts;
}

std::wstring DefaultOf(std::wstring_view key) {
  const Setting* setting = Catalogue::BuiltIn().Find(key);
  return setting ? setting->defaultValue : L"no such key";
}

TEST(ServiceCatalogue, HasEveryKeyAndNoOther) {
  std::set<std::wstring> expectedKeys;
  for (const auto& [index, key] : expected::SettingKeys()) expectedKeys.insert(key);
  ASSERT_EQ(expectedKeys.size(), 151u);
  std::set<std::wstring> keys;
  for (const auto& [key, setting] : Catalogue::BuiltIn().Settings()) keys.insert(key);
  EXPECT_EQ(keys, expectedKeys);
}

TEST(ServiceCatalogue, KeyMatchesAsAWholeOnly) {
  const Catalogue& catalogue = Catalogue::BuiltIn();
  EXPECT_TRUE(catalogue.Find(L"ComponentsDriver\\\\ServiceVersion"));
  EXPECT_FALSE(catalogue.Find(L"ComponentsDriver\\ServiceVersion"));
  EXPECT_FALSE(catalogue.Find(L"componentsdriver\\\\ServiceVersion"));
  EXPECT_FALSE(catalogue.Find(L"ServiceVersion"));
  EXPECT_FALSE(catalogue.Find(L""));
}

TEST(ServiceCatalogue, KnowsTheKindOfEachKey) {
  for (const auto& [key, setting] : Catalogue::BuiltIn().Settings()) {
    const bool isList = key.ends_with(L"OptionsList") || key.ends_with(L"OptionList");
    const SettingKind expectedKind =
        key.ends_with(L"ButtonFunction")             ? SettingKind::kButtonFunction
        : key.ends_with(L"ButtonFunctionAppPath")    ? SettingKind::kButtonAppPath
        : key.ends_with(L"ButtonFunctionName")       ? SettingKind::kButtonName
        : key.ends_with(L"ButtonFunctionKeystrokes") ? SettingKind::kButtonKeystrokes
        : isList                                     ? SettingKind::kOptionList
                                                     : SettingKind::kPlain;
    EXPECT_EQ(setting.kind, expectedKind) << ToUtf8(key);
  }
}

TEST(ServiceCatalogue, VersionsFitTheRecordOfTheLibrary) {
  for (const auto key :
       {L"ComponentsDriver\\\\ServiceVersion", L"ComponentsDriver\\\\HIDRouterVersion"}) {
    EXPECT_FALSE(DefaultOf(key).empty());
    EXPECT_LE(DefaultOf(key).size(), 15u);
  }
}

TEST(ServiceCatalogue, OptionListsHaveSeveralItems) {
  for (const auto& [key, setting] : Catalogue::BuiltIn().Settings()) {
    if (setting.kind != SettingKind::kOptionList) continue;
    const auto codes = FirstTexts(setting.defaultValue);
    EXPECT_GE(codes.size(), 3u) << ToUtf8(key);
    EXPECT_EQ(std::set(codes.begin(), codes.end()).size(), codes.size()) << ToUtf8(key);
  }
}

TEST(ServiceCatalogue, ListsOfferKeystrokesAndApplicationsToButtons) {
  for (const auto key :
       {L"SideSwitchOptionsList", L"RadialWedgeOptionsList", L"TopButtonSingleOptionsList",
        L"TopButtonDoubleOptionsList", L"TopButtonLongOptionsList"}) {
    EXPECT_THAT(FirstTexts(DefaultOf(key)), IsSupersetOf({L"8", L"23"})) << ToUtf8(key);
  }
}

TEST(ServiceCatalogue, ItemsOfAFunctionListAreNamedAfterTheirFunctions) {
  const Catalogue& catalogue = Catalogue::BuiltIn();
  const std::wstring list = DefaultOf(L"RadialWedgeOptionsList");
  KorvuISD::OptionItems items(list);
  while (const auto item = items.Next()) {
    EXPECT_EQ(item->second, catalogue.FunctionName(item->first));
    EXPECT_FALSE(item->second.starts_with(L"Function "));
  }
}

TEST(ServiceCatalogue, ChosenDisplayIsOneOfTheMonitors) {
  EXPECT_THAT(
      FirstTexts(DefaultOf(L"MonitorOptionsList")),
      testing::Contains(DefaultOf(L"ComponentsDriver\\\\OpaqueSettings\\\\OpaqueDisplayPath")));
}

TEST(ServiceCatalogue, ModuleSitsInThePen) {
  const std::wstring pen =
      DefaultOf(L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\LastEPXSerialNumber");
  EXPECT_FALSE(pen.empty());
  EXPECT_EQ(DefaultOf(L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\LastEPXSerialNumber"),
            pen);
  EXPECT_EQ(DefaultOf(L"ComponentsDriver\\\\PenHandler\\\\LastEPXSerialNumber"), pen);
}

TEST(ServiceCatalogue, ButtonsAreNamedAfterTheirFunctions) {
  const Catalogue& catalogue = Catalogue::BuiltIn();
  for (const auto& [key, setting] : catalogue.Settings()) {
    if (setting.kind != SettingKind::kButtonFunction) continue;
    EXPECT_EQ(DefaultOf(key + L"Name"), catalogue.FunctionName(setting.defaultValue));
  }
}

TEST(ServiceCatalogue, FunctionWithoutANameIsCalledByItsCode) {
  EXPECT_EQ(Catalogue::BuiltIn().FunctionName(L"9999"), L"Function 9999");
  EXPECT_EQ(Catalogue::BuiltIn().FunctionName(L"5"), L"Pan");
}

TEST(ServiceCatalogue, ButtonKeysFollowFromAnyOfThem) {
  for (const auto key : {L"a\\\\ButtonFunction", L"a\\\\ButtonFunctionName",
                         L"a\\\\ButtonFunctionAppPath", L"a\\\\ButtonFunctionKeystrokes"}) {
    const ButtonKeys keys = ButtonKeysOf(key);
    EXPECT_EQ(keys.function, L"a\\\\ButtonFunction");
    EXPECT_EQ(keys.appPath, L"a\\\\ButtonFunctionAppPath");
    EXPECT_EQ(keys.name, L"a\\\\ButtonFunctionName");
    EXPECT_EQ(keys.keystrokes, L"a\\\\ButtonFunctionKeystrokes");
  }
}

TEST(ServiceCatalogue, ReadsItsDocumentedForm) {
  const Catalogue catalogue(R"({
    "functions": { "1": "Click" },
    "settings": { "Driver\\Speed": "7" },
    "buttons": { "Driver\\Button": { "function": "1", "keystrokes": "Ctrl+A" } },
    "functionLists": { "List": ["1", "2"] },
    "textLists": { "Texts": [{ "C:\\a.exe": "A" }, { "b": "B" }] }
  })");
  EXPECT_EQ(catalogue.Settings().size(), 7u);
  EXPECT_EQ(catalogue.Find(L"Driver\\\\Speed")->defaultValue, L"7");
  EXPECT_EQ(catalogue.Find(L"Driver\\\\Button\\\\ButtonFunctionName")->defaultValue, L"Click");
  EXPECT_EQ(catalogue.Find(L"Driver\\\\Button\\\\ButtonFunctionKeystrokes")->defaultValue,
            L"Ctrl+A");
  EXPECT_EQ(catalogue.Find(L"Driver\\\\Button\\\\ButtonFunctionAppPath")->defaultValue, L"");
  EXPECT_EQ(catalogue.Find(L"List")->defaultValue, L"{\"1\":\"Click\"},{\"2\":\"Function 2\"}");
  EXPECT_EQ(catalogue.Find(L"Texts")->defaultValue, L"{\"C:\\a.exe\":\"A\"},{\"b\":\"B\"}");
}

class BrokenCatalogue : public testing::TestWithParam<const char*> {};

TEST_P(BrokenCatalogue, IsRejected) {
  EXPECT_THROW(Catalogue catalogue(GetParam()), CatalogueError);
}

INSTANTIATE_TEST_SUITE_P(
    ServiceCatalogue, BrokenCatalogue,
    testing::Values(
        "", "[]", "{}", "{", R"({"functions":{},"settings":{},"buttons":{},"functionLists":{}})",
        R"({"functions":[],"settings":{},"buttons":{},"functionLists":{},"textLists":{}})",
        R"({"functions":{},"settings":{"a":1},"buttons":{},"functionLists":{},"textLists":{}})",
        R"({"functions":{},"settings":{},"buttons":{"a":{}},"functionLists":{},"textLists":{}})",
        R"({"functions":{},"settings":{"a":""},"buttons":{},"functionLists":{"a":["1"]},"textLists":{}})"));

}  // namespace
}  // namespace tool::service
