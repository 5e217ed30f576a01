// The library under test, as the system's loader loads it: from a file of its own, afresh in every
// life.
#pragma once

#include <string>

#include <windows.h>

#include "support/library.h"

namespace simulation {

class LoadedLibrary {
 public:
  explicit LoadedLibrary(const std::string& path);
  // Not while a thread of the library runs.
  ~LoadedLibrary();
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  // Gives the application's reference back.
  void Unload();

  const void* GreatLock() const { return greatLock; }

#define SIMULATION_DECLARE(name) decltype(&::name) name = nullptr;
  KORVU_CONNECTION_EXPORTS(SIMULATION_DECLARE)
  KORVU_NAMED_EXPORTS(SIMULATION_DECLARE)
#undef SIMULATION_DECLARE
  decltype(&::KorvuISD_SendManual) SendManual = nullptr;

 private:
  const std::string path;
  void* file = nullptr;
  HMODULE module = nullptr;
  const void* greatLock = nullptr;
};

}  // namespace simulation
