// Counts what the service announces to a client, and takes the time of the last one.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

#include <windows.h>

#include "platform/unique_handle.h"
#include "support/clock.h"

namespace bench {

// What counts as an arrival for the clients that hand over texts: every announcement, or what
// changes the value, like the callbacks of the others.
enum class Counting { kEveryAnnouncement, kChanges };

class Arrivals {
 public:
  Arrivals();

  // From now on, so many are expected. Not while any are under way.
  void Expect(size_t count, Counting how = Counting::kChanges);

  // On the client's own thread -------------------------------------------------------------------

  // A callback for a value.
  void Arrived() {
    if (arrived.fetch_add(1, std::memory_order_relaxed) + 1 == expected) Finish();
  }
  void Announcement(std::wstring_view message) {
    if (counting == Counting::kEveryAnnouncement || IsChange(message)) Arrived();
  }
  void Reply(std::wstring_view message) {
    if (counting == Counting::kChanges && IsChange(message)) Arrived();
  }

  // On the thread that expects -------------------------------------------------------------------

  // False if fewer have come in time.
  bool Wait(DWORD timeoutMs);
  size_t Count() const { return arrived; }
  const Sample& Begin() const { return begin; }
  const Sample& End() const { return end; }

 private:
  void Finish();
  bool IsChange(std::wstring_view message);

  KorvuISD::EventHandle finished;
  std::atomic<size_t> arrived{0};
  std::atomic<size_t> expected{0};
  std::atomic<Counting> counting{Counting::kChanges};
  Sample begin;
  Sample end;
  std::mutex mutex;
  std::wstring latestValue;  // under the mutex
};

}  // namespace bench
