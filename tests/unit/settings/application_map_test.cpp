#include "settings/application_map.h"

#include <gmock/gmock.h>

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

TEST(ApplicationMap, GivesThePathOfADisplayName) {
  ApplicationMap applications;
  applications.SetPath(L"Paint", L"c:\\paint.exe");
  applications.SetPath(L"Notes", L"c:\\notes.exe");
  EXPECT_EQ(applications.PathToSend(L"Paint"), L"c:\\paint.exe");
  EXPECT_EQ(applications.PathToSend(L"Notes"), L"c:\\notes.exe");
}

TEST(ApplicationMap, ReplacesThePathOfADisplayName) {
  ApplicationMap applications;
  applications.SetPath(L"Paint", L"old.exe");
  applications.SetPath(L"Paint", L"new.exe");
  EXPECT_EQ(applications.PathToSend(L"Paint"), L"new.exe");
  EXPECT_THAT(applications.Entries(), ElementsAre(Pair(L"Paint", L"new.exe")));
}

TEST(ApplicationMap, GivesAnUnknownTextBackAndKeepsItWithoutAPath) {
  ApplicationMap applications;
  EXPECT_THAT(applications.Entries(), IsEmpty());
  EXPECT_EQ(applications.PathToSend(L"c:\\tool.exe"), L"c:\\tool.exe");
  EXPECT_EQ(applications.PathToSend(L"c:\\tool.exe"), L"c:\\tool.exe");
  EXPECT_THAT(applications.Entries(), ElementsAre(Pair(L"c:\\tool.exe", L"")));
}

TEST(ApplicationMap, TellsLetterCaseApart) {
  ApplicationMap applications;
  applications.SetPath(L"Paint", L"a.exe");
  EXPECT_EQ(applications.PathToSend(L"paint"), L"paint");
}

}  // namespace
