#include "handle_table.h"

#include <map>
#include <sstream>
#include <utility>

#include "control.h"
#include "misuse.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {
namespace {

struct Entry {
  std::shared_ptr<Object> object;
  DWORD access = 0;
  size_t useCount = 0;
};

struct Table {
  std::map<HANDLE, Entry> entries;
  // Multiples of four, like the system's.
  ULONG_PTR last = 0x1000;

  HANDLE Next() {
    last += 4;
    return reinterpret_cast<HANDLE>(last);
  }
  bool WasOnce(HANDLE handle) const {
    const auto number = reinterpret_cast<ULONG_PTR>(handle);
    return number > 0x1000 && number <= last && number % 4 == 0;
  }
};

// Never destroyed: threads may outlive the static objects.
Table& Handles() {
  static Table& table = *new Table;
  return table;
}

std::string Describe(HANDLE handle, const char* what) {
  std::ostringstream text;
  text << "handle " << handle << " " << what;
  return text.str();
}

Entry* FindEntry(HANDLE handle) {
  const auto found = Handles().entries.find(handle);
  return found == Handles().entries.end() ? nullptr : &found->second;
}

void NoteUnknown(HANDLE handle, const char* function) {
  SetLastError(ERROR_INVALID_HANDLE);
  // Both stand for no handle, and may be handed over as such.
  if (!handle || handle == INVALID_HANDLE_VALUE) return;
  NoteMisuse(function,
             Describe(handle, Handles().WasOnce(handle) ? "is closed" : "has never been one"));
}

}  // namespace

HANDLE OpenHandle(std::shared_ptr<Object> object, DWORD access) {
  const HANDLE handle = Handles().Next();
  ++object->handleCount;
  Handles().entries.emplace(handle, Entry{std::move(object), access});
  return handle;
}

std::shared_ptr<Object> FindObject(HANDLE handle, const char* function) {
  if (const Entry* const entry = FindEntry(handle)) return entry->object;
  NoteUnknown(handle, function);
  return nullptr;
}

void NoteWrongKind(HANDLE handle, const char* function) {
  SetLastError(ERROR_INVALID_HANDLE);
  NoteMisuse(function, Describe(handle, "is of another kind"));
}

DWORD AccessOf(HANDLE handle) {
  const Entry* const entry = FindEntry(handle);
  return entry ? entry->access : 0;
}

HandleInUse::HandleInUse(HANDLE handle) : handle(handle) {
  ++FindEntry(handle)->useCount;
}

HandleInUse::HandleInUse(HandleInUse&& other) noexcept
    : handle(std::exchange(other.handle, nullptr)) {}

HandleInUse::~HandleInUse() {
  if (Entry* const entry = FindEntry(handle)) --entry->useCount;
}

size_t OpenHandles() {
  const KernelLock lock;
  return Handles().entries.size();
}

}  // namespace platform_double

using namespace platform_double;

BOOL CloseHandle(HANDLE handle) {
  const KernelLock lock;
  // Stands for the process, too, which is not closed by that.
  if (handle == INVALID_HANDLE_VALUE) return TRUE;
  Entry* const entry = FindEntry(handle);
  if (!entry) {
    NoteUnknown(handle, "CloseHandle");
    return FALSE;
  }
  if (entry->useCount > 0) NoteMisuse("CloseHandle", Describe(handle, "is waited for"));
  const std::shared_ptr<Object> object = std::move(entry->object);
  Handles().entries.erase(handle);
  if (--object->handleCount == 0) object->OnLastHandleClosed();
  return TRUE;
}

BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target,
                     DWORD, BOOL inherit, DWORD options) {
  HANDLE duplicate = nullptr;
  {
    const KernelLock lock;
    if (sourceProcess != GetCurrentProcess() || targetProcess != GetCurrentProcess() || inherit ||
        options != DUPLICATE_SAME_ACCESS) {
      return RefuseAsUnsupported("DuplicateHandle", "another process, inheritance or other rights");
    }
    std::shared_ptr<Object> object = FindObject(source, "DuplicateHandle");
    if (!object) return FALSE;
    duplicate = OpenHandle(std::move(object), AccessOf(source));
  }
  *target = duplicate;
  return TRUE;
}
