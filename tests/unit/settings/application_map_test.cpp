#include "settings/application_map.h"

#include <gmock/gmock.h>

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

void SetPath(ApplicationMap& applications, const wchar_t* displayName, const wchar_t* path) {
  applications.Use([&](ApplicationMap::Paths& paths) { paths[displayName] = path; });
}

ApplicationMap::Paths EntriesOf(ApplicationMap& applications) {
  ApplicationMap::Paths entries;
  applications.Use([&](const ApplicationMap::Paths& paths) { entries = paths; });
  return entries;
}

TEST(ApplicationMap, GivesThePathOfADisplayName) {
  ApplicationMap applications;
  SetPath(applications, L"Paint", L"c:\\paint.exe");
  SetPath(applications, L"Notes", L"c:\\notes.exe");
  EXPECT_EQ(applications.PathToSend(L"Paint"), L"c:\\paint.exe");
  EXPECT_EQ(applications.PathToSend(L"Notes"), L"c:\\notes.exe");
}

TEST(ApplicationMap, ReplacesThePathOfADisplayName) {
  ApplicationMap applications;
  SetPath(applications, L"Paint", L"old.exe");
  SetPath(applications, L"Paint", L"new.exe");
  EXPECT_EQ(applications.PathToSend(L"Paint"), L"new.exe");
  EXPECT_THAT(EntriesOf(applications), ElementsAre(Pair(L"Paint", L"new.exe")));
}

TEST(ApplicationMap, GivesAnUnknownTextBackAndKeepsItWithoutAPath) {
  ApplicationMap applications;
  EXPECT_THAT(EntriesOf(applications), IsEmpty());
  EXPECT_EQ(applications.PathToSend(L"c:\\tool.exe"), L"c:\\tool.exe");
  EXPECT_EQ(applications.PathToSend(L"c:\\tool.exe"), L"c:\\tool.exe");
  EXPECT_THAT(EntriesOf(applications), ElementsAre(Pair(L"c:\\tool.exe", L"")));
}

TEST(ApplicationMap, TellsLetterCaseApart) {
  ApplicationMap applications;
  SetPath(applications, L"Paint", L"a.exe");
  EXPECT_EQ(applications.PathToSend(L"paint"), L"paint");
}

}  // namespace
