// The applications that a button can start. The setters that assign one look into the same list.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class RunAppOptions : public SettingsTest {
 protected:
  // Every record bears the code of the list, not that of the assignment.
  static Calls Applications(const std::vector<std::wstring>& names) {
    std::vector<arguments::Option> options;
    for (const std::wstring& name : names) options.push_back({88, name});
    return Both({{kOnRunAppOptions, arguments::Options(options)}});
  }

  // Assigns "run this application" to the upper side switch.
  void Assign(const std::wstring& text) {
    ButtonFunctionValue assignment{};
    assignment.function = 23;
    text.copy(assignment.text, KORVUISD_NAME_CAPACITY - 1);
    library.KorvuISD_SetTopSinglePress(&assignment, 0);
  }
};

TEST_F(RunAppOptions, BearTheCodeOfTheListAndAscendByDisplayName) {
  Begin();
  EXPECT_EQ(Announced(kRunAppOptions, LR"({"c:\1.exe":"b"}{"c:\2.exe":"B"}{"23":"a"}{"c:\3":"é"})"),
            Applications({L"B", L"a", L"b", L"é"}));
}

TEST_F(RunAppOptions, WithTheSameDisplayNameAreOneAndTheLaterPathCounts) {
  Begin();
  EXPECT_EQ(Announced(kRunAppOptions, LR"({"old.exe":"Paint"}{"new.exe":"Paint"})"),
            Applications({L"Paint"}));
  service.Forget();
  Assign(L"Paint");
  const auto requests = service.WaitForRequests(2);  // function, path
  EXPECT_THAT(requests,
              testing::Contains(ScriptedService::SetMessage(Key(kUpperSwitch + 1), L"new.exe")));
}

TEST_F(RunAppOptions, ShowTheTextThatASetterCouldNotFind) {
  Begin();
  ASSERT_EQ(Announced(kRunAppOptions, LR"({"c:\paint.exe":"Paint"})"), Applications({L"Paint"}));
  Assign(LR"(c:\tools\Notes.exe)");
  Assign(L"Paint");
  EXPECT_EQ(Announced(kRunAppOptions, L""), Applications({L"Paint", LR"(c:\tools\Notes.exe)"}));
}

TEST_F(RunAppOptions, KeepWhatCameBeforeTheFirstMarkThatIsMissing) {
  Begin();
  EXPECT_EQ(Announced(kRunAppOptions, LR"({"a.exe":"A"}{"b.exe","B"})"), Applications({L"A"}));
}

TEST_F(RunAppOptions, HaveNoCodeThatCouldFailToConvert) {
  Begin();
  EXPECT_EQ(Announced(kRunAppOptions, LR"({"abc":"A"}{"":"B"}{"12345678901":""})"),
            Applications({L"", L"A", L"B"}));
}

TEST_F(RunAppOptions, LongerThanANameAreCutToFiveHundredTwelveUnits) {
  Begin();
  const std::wstring name(600, L'n');
  EXPECT_EQ(Announced(kRunAppOptions, L"{\"a.exe\":\"" + name + L"\"}{\"b.exe\":\"z\"}"),
            Applications({name.substr(0, 512), L"z"}));
}

}  // namespace
