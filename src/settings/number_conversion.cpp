#include "settings/number_conversion.h"

#include <array>
#include <cerrno>
#include <cwchar>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace KorvuISD {
namespace {

// Nearly all values are a few digits, perhaps with a minus. Whatever else there may be, down to the
// digits of other scripts, is left to the C library.
std::optional<int32_t> PlainNumber(std::wstring_view text) {
  constexpr size_t kAlwaysFit = 9;
  const bool isNegative = text.starts_with(L'-');
  if (isNegative) text.remove_prefix(1);
  if (text.empty() || text.size() > kAlwaysFit) return std::nullopt;
  int32_t number = 0;
  for (const wchar_t unit : text) {
    if (unit < L'0' || unit > L'9') return std::nullopt;
    number = number * 10 + static_cast<int32_t>(unit - L'0');
  }
  return isNegative ? -number : number;
}

}  // namespace

// The standard library's own stoi and to_wstring are not used: its failures bear other texts, and
// its number writers bring the whole of formatted output into the DLL.

int32_t ConvertNumber(const std::wstring& text) {
  if (const auto number = PlainNumber(text)) return *number;
  const int outerErrno = errno;
  errno = 0;
  wchar_t* end = nullptr;
  const long number = std::wcstol(text.c_str(), &end, 10);
  const bool overflowed = errno == ERANGE;
  errno = outerErrno;
  if (end == text.c_str()) throw std::invalid_argument("invalid stoi argument");
  if (overflowed || number < std::numeric_limits<int32_t>::min() ||
      number > std::numeric_limits<int32_t>::max()) {
    throw std::out_of_range("stoi argument out of range");
  }
  return static_cast<int32_t>(number);
}

std::wstring UnsignedDecimal(uint32_t number) {
  std::array<wchar_t, 10> digits;
  size_t first = digits.size();
  do {
    digits[--first] = static_cast<wchar_t>(L'0' + number % 10);
    number /= 10;
  } while (number != 0);
  return std::wstring(digits.begin() + static_cast<std::ptrdiff_t>(first), digits.end());
}

std::wstring SignedDecimal(int32_t number) {
  if (number >= 0) return UnsignedDecimal(static_cast<uint32_t>(number));
  // The magnitude of the smallest number does not fit the signed type.
  return L'-' + UnsignedDecimal(0U - static_cast<uint32_t>(number));
}

}  // namespace KorvuISD
