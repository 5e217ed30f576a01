#include "support/import_hooks.h"

namespace support {
namespace {

std::mutex g_mutex;
std::vector<void (*)()> g_hooks;

}  // namespace

void AddHook(void (*clear)()) {
  const std::lock_guard lock(g_mutex);
  g_hooks.push_back(clear);
}

void ClearHooks() {
  const std::lock_guard lock(g_mutex);
  for (void (*const clear)() : g_hooks) clear();
}

}  // namespace support
