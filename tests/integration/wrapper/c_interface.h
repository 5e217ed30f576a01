// The C interface that the wrapper calls here: forwarded to the library, and written down.
#pragma once

#include <functional>
#include <vector>

#include "support/library.h"

namespace support {

struct CInterface {
  struct Registered {
    bool isRemoval = false;
    KorvuISD_Callbacks callbacks{};
    void* context = nullptr;
    int32_t apiVersion = 0;  // that was declared by then
  };

  // The interface's functions have no place for it, so there is one for the process.
  static CInterface& Instance();

  // Without one, nothing is forwarded.
  Library* library = nullptr;
  std::function<void()> beforeShutdown;
  std::vector<Registered> registered;
  std::vector<uint32_t> timeouts;  // of connects
  int shutdownCount = 0;
  int32_t apiVersion = 0;
};

}  // namespace support
