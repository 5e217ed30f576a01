#include "settings-service/system_error.h"

#include <array>

#include <fmt/core.h>

#include "settings-service/text.h"

namespace tool::service {

std::string SystemErrorText(DWORD error) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring_view message(buffer.data(), length);
  while (message.ends_with(L'\n') || message.ends_with(L'\r') || message.ends_with(L' ')) {
    message.remove_suffix(1);
  }
  if (message.empty()) return fmt::format("error {}", error);
  return fmt::format("{} (error {})", ToUtf8(message), error);
}

void FailWith(std::string_view step, DWORD error) {
  throw ServiceFailure(fmt::format("{}: {}", step, SystemErrorText(error)));
}

}  // namespace tool::service
