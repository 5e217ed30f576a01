#include "operation.h"

#include <atomic>
#include <cstring>
#include <set>
#include <utility>

#include "handle_table.h"
#include "misuse.h"

namespace platform_double {
namespace {

// Of operations under way. Never destroyed: threads may outlive the static objects.
std::set<const OVERLAPPED*>& InUse() {
  static auto& inUse = *new std::set<const OVERLAPPED*>;
  return inUse;
}

void StoreStatus(OVERLAPPED& overlapped, Status status) {
  std::atomic_ref(overlapped.Internal)
      .store(static_cast<ULONG_PTR>(status), std::memory_order_release);
}

}  // namespace

void Operation::MarkPending(OVERLAPPED& overlapped) {
  overlapped.InternalHigh = 0;
  StoreStatus(overlapped, Status::kPending);
}

std::shared_ptr<Operation> Operation::Begin(OVERLAPPED& overlapped, const char* function,
                                            std::span<char> buffer) {
  if (InUse().contains(&overlapped)) {
    NoteMisuse(function, "the operation of this OVERLAPPED is still under way");
  }
  std::shared_ptr<Event> event;
  if (overlapped.hEvent) {
    event = Find<Event>(overlapped.hEvent, function);
    if (!event) return nullptr;
    event->Reset();
  }
  return std::make_shared<Operation>(overlapped, std::move(event), buffer);
}

Operation::Operation(OVERLAPPED& overlapped, std::shared_ptr<Event> event, std::span<char> buffer)
    : overlapped(overlapped), event(std::move(event)), buffer(buffer) {
  InUse().insert(&overlapped);
  start.Pass();
}

// One that could not start never ends; its OVERLAPPED stays marked as pending.
Operation::~Operation() {
  InUse().erase(&overlapped);
}

void Operation::Fill(std::span<const char> bytes) {
  if (bytes.empty()) return;
  start.Take();
  const InSightOfSanitizer shown;
  std::memcpy(buffer.data() + filledBytes, bytes.data(), bytes.size());
  filledBytes += bytes.size();
}

void Operation::End(Status endStatus, size_t endByteCount) {
  status = endStatus;
  byteCount = endByteCount;
  start.Take();
  {
    const InSightOfSanitizer shown;
    overlapped.InternalHigh = byteCount;
    StoreStatus(overlapped, status);
  }
  InUse().erase(&overlapped);
  if (event) event->Set();
}

}  // namespace platform_double
