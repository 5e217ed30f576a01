// Keys as people type them.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "settings-service/catalogue.h"

namespace tool::service {

struct UnknownKey {
  std::string message;
};

// The key that `typed` means: a whole key with double or single backslashes, or its last part or
// parts where no other key ends in them.
std::variant<std::wstring, UnknownKey> FindKey(const Catalogue& catalogue, std::wstring_view typed);

}  // namespace tool::service
