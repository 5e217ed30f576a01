// Keeps this DLL loaded while a thread of its own runs in it.
#pragma once

#include <utility>

#include <windows.h>

namespace KorvuISD {

class ModuleReference {
 public:
  ModuleReference() {
    // Counts like a LoadLibrary of this library; any address inside it names it.
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&kAddressInside), &module);
  }
  ModuleReference(ModuleReference&& other) noexcept
      : module(std::exchange(other.module, nullptr)) {}
  ModuleReference& operator=(ModuleReference&&) = delete;
  ~ModuleReference() {
    if (module) FreeLibrary(module);
  }

  // Ends the calling thread and gives the reference back in one step: code that returns into the
  // library after FreeLibrary might return into nothing. No object may live on the stack.
  [[noreturn]] static void EndThread(ModuleReference reference, DWORD status) {
    FreeLibraryAndExitThread(std::exchange(reference.module, nullptr), status);
  }

 private:
  static constexpr char kAddressInside = 0;
  HMODULE module = nullptr;
};

}  // namespace KorvuISD
