#include <atomic>
#include <cstdint>
#include <cstring>
#include <set>
#include <thread>

#include "support/import_hooks.h"

namespace support {
namespace {

struct ImportSlot {
  void** address = nullptr;
};

ImportSlot FindImport(HMODULE module, const char* function) {
  auto* const base = reinterpret_cast<uint8_t*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const nt = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  const auto& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* import =
           reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
       import->Name; ++import) {
    const auto* name =
        reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + import->OriginalFirstThunk);
    auto* slot = reinterpret_cast<IMAGE_THUNK_DATA64*>(base + import->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
      const auto* const entry =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) {
        return {reinterpret_cast<void**>(&slot->u1.Function)};
      }
    }
  }
  return {};
}

// The C++ runtime makes the events of its mutexes with the narrow functions; the library never uses
// those.
std::mutex g_runtimeMutex;
std::set<HANDLE> g_runtimeHandles;
std::atomic<void*> g_realCreateEventA = nullptr;
std::atomic<void*> g_realCreateSemaphoreA = nullptr;

// The runtime may come to a watched function before WatchRuntimeHandles has noted the real one.
template <class Function>
Function* Real(const std::atomic<void*>& real) {
  while (!real.load()) std::this_thread::yield();
  return reinterpret_cast<Function*>(real.load());
}

HANDLE Remember(HANDLE handle) {
  const std::lock_guard lock(g_runtimeMutex);
  g_runtimeHandles.insert(handle);
  return handle;
}

HANDLE WINAPI WatchedCreateEventA(SECURITY_ATTRIBUTES* security, BOOL manual, BOOL set,
                                  LPCSTR name) {
  return Remember(Real<decltype(CreateEventA)>(g_realCreateEventA)(security, manual, set, name));
}

HANDLE WINAPI WatchedCreateSemaphoreA(SECURITY_ATTRIBUTES* security, LONG initial, LONG maximum,
                                      LPCSTR name) {
  return Remember(
      Real<decltype(CreateSemaphoreA)>(g_realCreateSemaphoreA)(security, initial, maximum, name));
}

}  // namespace

void* RedirectImport(const Library& library, const char* function, void* replacement) {
  const ImportSlot slot = FindImport(library.Module(), function);
  if (!slot.address) return nullptr;
  DWORD protection = 0;
  VirtualProtect(slot.address, sizeof(void*), PAGE_READWRITE, &protection);
  void* const previous = std::atomic_ref<void*>(*slot.address).exchange(replacement);
  VirtualProtect(slot.address, sizeof(void*), protection, &protection);
  return previous;
}

bool IsRuntimeHandle(HANDLE handle) {
  const std::lock_guard lock(g_runtimeMutex);
  return g_runtimeHandles.contains(handle);
}

void WatchRuntimeHandles(const Library& library) {
  static std::atomic<int> watched = 0;
  if (watched.exchange(library.Number()) == library.Number()) return;
  g_realCreateEventA =
      RedirectImport(library, "CreateEventA", reinterpret_cast<void*>(&WatchedCreateEventA));
  g_realCreateSemaphoreA = RedirectImport(library, "CreateSemaphoreA",
                                          reinterpret_cast<void*>(&WatchedCreateSemaphoreA));
}

}  // namespace support
