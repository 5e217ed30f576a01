// The pipes belong to a Windows session: their names end in its number.

#include "support/session.h"

#include "integration/integration_test.h"

using namespace support;
using testing::ElementsAre;

namespace {

// The names of both pipes, as an attempt to connect uses them. No pipe need exist.
std::vector<std::wstring> PipeNames(const Library& library) {
  std::vector<std::wstring> names;
  WaitNamedPipeWHook::Set(library, [&](LPCWSTR name, DWORD) -> BOOL {
    names.emplace_back(name);
    // The send-only pipe is there, the duplex pipe is not.
    return names.size() == 1;
  });
  CreateFileWHook::Set(library, [&](LPCWSTR name, DWORD, DWORD, auto, DWORD, DWORD, HANDLE) {
    names.emplace_back(name);
    return CreateEventW(nullptr, TRUE, FALSE, nullptr);
  });
  SetNamedPipeHandleStateHook::Set(library, [](HANDLE, auto, auto, auto) -> BOOL { return TRUE; });
  EXPECT_EQ(library.KorvuISD_Connect(1000), KorvuISD_ErrorFailed);
  WaitNamedPipeWHook::Clear();
  CreateFileWHook::Clear();
  SetNamedPipeHandleStateHook::Clear();
  return names;
}

TEST(Session, ThatCannotBeReadCountsAsZero) {
  const Library library(Library::Session::kUnreadable);
  EXPECT_THAT(PipeNames(library), ElementsAre(LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_0)",
                                              LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_0)",
                                              LR"(\\.\pipe\KorvuSettingsSyncher_0)"));
}

TEST(Session, GoesIntoThePipeNamesInPlainDecimal) {
  const Library library;
  const std::wstring session = std::to_wstring(GetCurrentProcessId());
  EXPECT_THAT(PipeNames(library),
              ElementsAre(LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_)" + session,
                          LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_)" + session,
                          LR"(\\.\pipe\KorvuSettingsSyncher_)" + session));
}

// Each client reads the session when it is made.
TEST(Session, UsesAllThirtyTwoBitsOfItsNumber) {
  const Library library;
  {
    ScriptedService service;
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    UseSession(4294967295);
    library.KorvuISD_Shutdown();
  }
  EXPECT_THAT(PipeNames(library),
              ElementsAre(LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_4294967295)",
                          LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_4294967295)",
                          LR"(\\.\pipe\KorvuSettingsSyncher_4294967295)"));
}

}  // namespace
