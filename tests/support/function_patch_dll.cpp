#include <array>
#include <cstdint>
#include <cstring>

#include <windows.h>

#include "support/function_patch.h"

namespace support {

void ReplaceSystemFunction(const char* function, const void* replacement) {
  const auto target =
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), function));
  std::array<uint8_t, 12> jump = {0x48, 0xB8};  // mov rax, replacement
  std::memcpy(&jump[2], &replacement, sizeof(replacement));
  jump[10] = 0xFF;  // jmp rax
  jump[11] = 0xE0;
  DWORD protection = 0;
  VirtualProtect(target, jump.size(), PAGE_EXECUTE_READWRITE, &protection);
  std::memcpy(target, jump.data(), jump.size());
  VirtualProtect(target, jump.size(), protection, &protection);
  FlushInstructionCache(GetCurrentProcess(), target, jump.size());
}

}  // namespace support
