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

std::atomic<int64_t> g_firstToFail = kNever;
std::atomic<int64_t> g_firstToPass = kNever;
std::atomic<int64_t> g_allocations = 0;
std::atomic<int64_t> g_failures = 0;
constinit thread_local bool g_countsHere = false;

bool MustFail() {
  if (!g_countsHere || platform_double::g_callDepth > 0) return false;
  const int64_t number = ++g_allocations;
  if (number < g_firstToFail || number >= g_firstToPass) return false;
  ++g_failures;
  return true;
}

}  // namespace

void Fail(int64_t first, int64_t count) {
  Restore();
  g_allocations = 0;
  g_failures = 0;
  g_firstToPass = count < kNever - first ? first + count : kNever;
  g_firstToFail = first;
}

int64_t Restore() {
  g_firstToFail = kNever;
  return g_failures;
}

int64_t Failed() {
  return g_failures;
}

void CountHere(bool counts) {
  g_countsHere = counts;
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
