// Callbacks that remember how they were called.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "support/wait.h"

namespace support {

// One call: the slot's number, the context, and all arguments written out, pointed-to records
// included, so that calls compare and print.
struct Call {
  int slot = -1;
  void* context = nullptr;
  std::wstring arguments;
  DWORD thread = 0;  // not compared
};
bool operator==(const Call& x, const Call& y);
void PrintTo(const Call& call, std::ostream* out);

// How arguments are written out, for expectations.
namespace arguments {
std::wstring Value(int64_t value);
std::wstring Versions(const std::wstring& hidRouter, const std::wstring& service);
std::wstring Pen(const PenInfo& pen);
std::wstring Button(int32_t function, const std::wstring& name);  // slots 2 to 4, 10, 31
std::wstring SideSwitch(int32_t function, const std::wstring& name, int32_t hoverClick);
std::wstring Wedge(int32_t function, const std::wstring& name);  // slot 29
std::wstring Text(const std::wstring& text);                     // counted or terminated
std::wstring ZoomMap(const std::vector<KorvuISD_ZoomMapEntry>& entries);
struct Option {
  int32_t function;
  std::wstring name;
};
std::wstring Options(const std::vector<Option>& options);
struct Monitor {
  std::wstring path;
  std::wstring name;
};
std::wstring Monitors(const std::vector<Monitor>& monitors, int32_t selected);
std::wstring Pair(int64_t first, int64_t second);  // ranges, zones, features
}  // namespace arguments

// The 41 slots by number, in the order of the record.
const char* SlotName(int slot);
constexpr int kSlotCount = 41;

// There is one recorder in a process, for all contexts: callbacks bear nothing but the context.
class CallbackRecorder {
 public:
  static CallbackRecorder& Instance();

  // A record with all slots set to recording functions.
  static KorvuISD_Callbacks All();
  static void ClearSlot(KorvuISD_Callbacks& callbacks, int slot);

  std::vector<Call> Calls() const;
  std::vector<Call> CallsOf(int slot) const;
  size_t CountOf(int slot) const;
  void Forget();

  // Until there have been `count` calls (of one slot). False if patience ran out.
  [[nodiscard]] bool WaitFor(size_t count, std::chrono::milliseconds patience = kPatience);
  [[nodiscard]] bool WaitForSlot(int slot, size_t count,
                                 std::chrono::milliseconds patience = kPatience);

  // Runs inside the callback, after it has been recorded, on its thread. Empty for none.
  void WhenCalled(std::function<void(const Call&)> action);

  // For the recording functions.
  void Record(int slot, void* context, std::wstring arguments);

 private:
  CallbackRecorder() = default;

  mutable std::mutex mutex;
  std::condition_variable changed;
  std::vector<Call> calls;
  std::array<size_t, kSlotCount> counts{};  // by slot
  std::function<void(const Call&)> action;
};

// Context pointers are only compared; small numbers do.
inline void* Context(uintptr_t number) {
  return reinterpret_cast<void*>(number);
}

}  // namespace support
