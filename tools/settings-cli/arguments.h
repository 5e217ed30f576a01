// What the words of the command line mean. Everything is checked here, before anything is sent.
// Pure; each function throws UsageError, naming the argument.
#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

namespace tool::cli {

int32_t ParseNumber(std::string_view name, std::string_view text, int32_t minimum, int32_t maximum);

// on, off, 1, 0, true, false, yes, no; in any letter case.
bool ParseSwitch(std::string_view name, std::string_view text);

// Seconds, a fraction too; at most 30 days.
std::chrono::milliseconds ParseSeconds(std::string_view name, std::string_view text);

// Rings are counted from 1 where people see them; the result counts from 0.
uint8_t ParseRing(std::string_view text);

// 1 to 8, clockwise from East, or a compass point, long or short; the result counts from 0.
uint8_t ParseWedge(std::string_view text);

std::string_view WedgeName(uint8_t wedge);

}  // namespace tool::cli
