// For every key with a handler, the values of a short life and the calls that each must cause.
//
// Written down key by key, and not taken from the library's own table.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "integration/settings/settings_test.h"

namespace settings_test {

struct Step {
  Value value;
  std::vector<Fired> fires;
};

// On a fresh connection at API version 9.
struct KeyCase {
  int index;
  std::vector<Step> steps;
};

// The key in a form that fits a test's name.
std::string NameOfKey(int index);

class Script {
 public:
  explicit Script(int index) : keyCase{index, {}} {}

  Script& Fires(const std::wstring& value, std::vector<Fired> fires) {
    return Other(keyCase.index, value, std::move(fires));
  }
  Script& Silent(const std::wstring& value) { return Other(keyCase.index, value); }

  // A value of another key, before or between.
  Script& Other(int index, const std::wstring& value, std::vector<Fired> fires = {}) {
    keyCase.steps.push_back({{index, value}, std::move(fires)});
    return *this;
  }

  // Values that are no number of 32 bits, one in each way.
  Script& Unconvertible() {
    for (const wchar_t* value : {L"abc", L"-", L" ", L"x12", L"2147483648", L"-2147483649",
                                 L"12345678901", L"99999999999999999999"}) {
      Silent(value);
    }
    return *this;
  }

  operator KeyCase() const { return keyCase; }

 private:
  KeyCase keyCase;
};

std::vector<KeyCase> NumberCases();
std::vector<KeyCase> ButtonCases();
std::vector<KeyCase> PenCases();
std::vector<KeyCase> TextCases();  // versions, lists, captures, map and path

std::vector<KeyCase> AllKeyCases();
KeyCase KeyCaseOf(int index);

}  // namespace settings_test
