#include "memory.h"

#include <cstdlib>
#include <new>

namespace {

size_t g_liveBlocks = 0;

void* Take(size_t size) {
  void* const block = std::malloc(size > 0 ? size : 1);
  if (!block) throw std::bad_alloc();
  ++g_liveBlocks;
  return block;
}

void Give(void* block) {
  if (!block) return;
  --g_liveBlocks;
  std::free(block);
}

}  // namespace

size_t simulation::LiveBlocks() {
  return g_liveBlocks;
}

void* operator new(size_t size) {
  return Take(size);
}
void* operator new[](size_t size) {
  return Take(size);
}
void operator delete(void* block) noexcept {
  Give(block);
}
void operator delete[](void* block) noexcept {
  Give(block);
}
void operator delete(void* block, size_t) noexcept {
  Give(block);
}
void operator delete[](void* block, size_t) noexcept {
  Give(block);
}
