// Both ends of a message pipe in one thread: ours as the library opens it, and the service's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <windows.h>

#include "platform/unique_handle.h"

namespace support {

class PipePair {
 public:
  // The pipe holds messages of so many bytes before a write has to wait for a read.
  explicit PipePair(DWORD bufferBytes = 64 * 1024);

  HANDLE Ours() const { return ours.Get(); }

  // The service's side. A write must fit the buffer; a read takes what is there, if anything.
  void Write(std::wstring_view message);
  std::optional<std::wstring> Read();
  void CloseService() { service.Reset(); }

 private:
  KorvuISD::PipeHandle service;
  KorvuISD::PipeHandle ours;
};

}  // namespace support
