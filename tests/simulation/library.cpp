#include "library.h"

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

#include "support/platform_double/control.h"

namespace simulation {
namespace {

void* Find(void* file, const char* name) {
  void* const found = dlsym(file, name);
  if (!found) {
    std::fprintf(stderr, "simulation: the library has no %s\n", name);
    std::exit(2);
  }
  return found;
}

}  // namespace

LoadedLibrary::LoadedLibrary(const std::string& path) : path(path) {
  file = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!file) {
    std::fprintf(stderr, "simulation: %s\n", dlerror());
    std::exit(2);
  }
#define SIMULATION_TAKE(name) name = reinterpret_cast<decltype(name)>(Find(file, #name));
  KORVU_CONNECTION_EXPORTS(SIMULATION_TAKE)
  KORVU_NAMED_EXPORTS(SIMULATION_TAKE)
#undef SIMULATION_TAKE
  SendManual = reinterpret_cast<decltype(SendManual)>(Find(file, "KorvuISD_SendManual"));
  greatLock = Find(file, "_ZN8KorvuISD10g_apiMutexE");
  module = platform_double::LoadLinkedLibrary(
      reinterpret_cast<platform_double::LibraryEntry>(Find(file, "DllMain")));
}

void LoadedLibrary::Unload() {
  platform_double::UnloadLinkedLibrary(module);
}

LoadedLibrary::~LoadedLibrary() {
  dlclose(file);
  // Gone in truth, or the next life would go on with what this one left.
  if (void* const still = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD)) {
    std::fputs("simulation: the library stays in memory\n", stderr);
    dlclose(still);
    std::exit(2);
  }
}

}  // namespace simulation
