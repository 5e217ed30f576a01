#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/library.h"
#include "support/session.h"

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

}  // namespace

Library::Library(Session session) {
  if (session == Session::kOwn) {
    UseSession(GetCurrentProcessId());
  } else {
    MakeSessionUnreadable();
  }
  module = LoadLibraryW(DllPath().c_str());
  if (!module) Fail("LoadLibraryW");
#define KORVU_LOOK_UP(name) LookUp(module, #name, name);
  KORVU_NAMED_EXPORTS(KORVU_LOOK_UP)
#undef KORVU_LOOK_UP
  LookUp(module, MAKEINTRESOURCEA(KORVUISD_SEND_MANUAL_ORDINAL), SendManual);
}

void Library::Unload() {
  if (!FreeLibrary(module)) Fail("FreeLibrary");
  module = nullptr;
}

}  // namespace support
