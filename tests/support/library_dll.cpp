#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/import_hooks.h"
#include "support/library.h"
#include "support/session.h"
#include "support/wait.h"

namespace support {
namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s: error %lu\n", what, GetLastError());
  std::abort();
}

// Beside the test program, as an application has it.
std::wstring DllPath() {
  std::array<wchar_t, 32768> path;
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring program(path.data(), length);
  return program.substr(0, program.find_last_of(L"\\/") + 1) + L"KorvuTabletSettingsAPI.dll";
}

template <class Function>
void LookUp(HMODULE module, LPCSTR name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  if (!function) Fail("GetProcAddress");
}

// The library that was loaded last, until it is unloaded.
struct Loaded {
  HMODULE module = nullptr;
  decltype(&::KorvuISD_Connect) connect = nullptr;
  decltype(&::KorvuISD_Shutdown) shutdown = nullptr;
  std::atomic<bool> hasConnection = false;
};
Loaded g_loaded;

// How many libraries this process has had.
int g_count = 0;

// Without a connection there is nobody whom a shutdown could wait for; with one, the DLL stays
// until the sync thread is through.
void EndLoaded() {
  if (!g_loaded.module) return;
  ClearHooks();
  if (g_loaded.hasConnection) g_loaded.shutdown();
  g_loaded.hasConnection = false;
  FreeLibrary(std::exchange(g_loaded.module, nullptr));
  const auto start = Clock::now();
  while (GetModuleHandleW(DllPath().c_str())) {
    if (Clock::now() - start > kPatience) Fail("a library that was shut down stays loaded");
    Sleep(1);
  }
}

}  // namespace

Library::Library(Session session) {
  EndLoaded();
  number = ++g_count;
  if (session == Session::kOwn) {
    UseSession(GetCurrentProcessId());
  } else {
    MakeSessionUnreadable();
  }
  module = LoadLibraryW(DllPath().c_str());
  if (!module) Fail("LoadLibraryW");
  g_loaded.module = module;
  LookUp(module, "KorvuISD_Connect", g_loaded.connect);
  LookUp(module, "KorvuISD_Shutdown", g_loaded.shutdown);
#define KORVU_LOOK_UP(name) LookUp(module, #name, name);
  KORVU_NAMED_EXPORTS(KORVU_LOOK_UP)
#undef KORVU_LOOK_UP
  LookUp(module, MAKEINTRESOURCEA(KORVUISD_SEND_MANUAL_ORDINAL), SendManual);
}

void Library::Unload() {
  if (!FreeLibrary(module)) Fail("FreeLibrary");
  module = nullptr;
  g_loaded.module = nullptr;
}

void Library::EndIfShared() {
  if (testing::UnitTest::GetInstance()->test_to_run_count() > 1) EndLoaded();
}

KorvuISD_Error Library::KorvuISD_Connect(uint32_t timeoutMs) const {
  const KorvuISD_Error error = g_loaded.connect(timeoutMs);
  if (error == KorvuISD_ErrorNone) g_loaded.hasConnection = true;
  return error;
}

void Library::KorvuISD_Shutdown() const {
  g_loaded.shutdown();
  g_loaded.hasConnection = false;
}

}  // namespace support
