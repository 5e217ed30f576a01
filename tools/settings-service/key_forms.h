// The two ways to write a key. Messages have two backslashes between its parts; people write one.
#pragma once

#include <string>
#include <string_view>

namespace tool::service {

// Takes either form, and runs of backslashes too.
std::wstring MessageKey(std::wstring_view key);

std::wstring PlainKey(std::wstring_view messageKey);

}  // namespace tool::service
