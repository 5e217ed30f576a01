#include "settings-service/key_forms.h"

namespace tool::service {
namespace {

// Replaces each run of backslashes.
std::wstring WithSeparator(std::wstring_view key, std::wstring_view separator) {
  std::wstring text;
  bool isInRun = false;
  for (const wchar_t c : key) {
    const bool isBackslash = c == L'\\';
    if (!isBackslash) {
      text.push_back(c);
    } else if (!isInRun) {
      text.append(separator);
    }
    isInRun = isBackslash;
  }
  return text;
}

}  // namespace

std::wstring MessageKey(std::wstring_view key) {
  return WithSeparator(key, L"\\\\");
}

std::wstring PlainKey(std::wstring_view messageKey) {
  return WithSeparator(messageKey, L"\\");
}

}  // namespace tool::service
