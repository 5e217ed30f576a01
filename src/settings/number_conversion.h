// Reads the numbers in values, and writes the numbers in set messages.
#pragma once

#include <cstdint>
#include <string>

namespace KorvuISD {

// Reads a signed decimal number of 32 bits. Leading white space and a sign are accepted, and what
// follows the digits is ignored. Throws std::invalid_argument("invalid stoi argument") if there is
// no digit, and std::out_of_range("stoi argument out of range") if the number does not fit.
int32_t ConvertNumber(const std::wstring& text);

std::wstring SignedDecimal(int32_t number);
std::wstring UnsignedDecimal(uint32_t number);

}  // namespace KorvuISD
