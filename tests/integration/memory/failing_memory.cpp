#include "integration/memory/failing_memory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

#include "platform_double/imports.h"

namespace failing_memory {
namespace {

constexpr int64_t kNever = std::numeric_limits<int64_t>::max();

std::atomic<int64_t> firstToFail = kNever;
std::atomic<int64_t> firstToPass = kNever;
std::atomic<int64_t> allocations = 0;
std::atomic<int64_t> failures = 0;
constinit thread_local bool countsHere = false;

bool MustFail() {
  if (!countsHere || platform_double::callDepth > 0) return false;
  const int64_t number = ++allocations;
  if (number < firstToFail || number >= firstToPass) return false;
  ++failures;
  return true;
}

}  // namespace

void Fail(int64_t first, int64_t count) {
  Restore();
  allocations = 0;
  failures = 0;
  firstToPass = count < kNever - first ? first + count : kNever;
  firstToFail = first;
}

int64_t Restore() {
  firstToFail = kNever;
  return failures;
}

int64_t Failed() {
  return failures;
}

void CountHere(bool counts) {
  countsHere = counts;
}

}  // namespace failing_memory

void* operator new(size_t size) {
  void* const memory = failing_memory::MustFail() ? nullptr : std::malloc(size > 0 ? size : 1);
  if (!memory) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}
