#include "memory.h"

#include <cstdlib>
#include <new>

namespace {

size_t liveBlocks = 0;

void* Take(size_t size) {
  void* const block = std::malloc(size > 0 ? size : 1);
  if (!block) throw std::bad_alloc();
  ++liveBlocks;
  return block;
}

void Give(void* block) {
  if (!block) return;
  --liveBlocks;
  std::free(block);
}

}  // namespace

size_t simulation::LiveBlocks() {
  return liveBlocks;
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
