#include "integration/settings/key_cases.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace settings_test {

std::string NameOfKey(int index) {
  std::wstring key = expected::SettingKeys().at(index);
  const std::wstring_view root = L"ComponentsDriver\\\\";
  if (key.starts_with(root)) key.erase(0, root.size());
  std::string name;
  for (const wchar_t unit : key) {
    if (unit != L'\\') {
      name += static_cast<char>(unit);
    } else if (!name.ends_with('_')) {
      name += '_';
    }
  }
  return name;
}

std::vector<KeyCase> AllKeyCases() {
  std::vector<KeyCase> cases;
  for (const auto& family : {NumberCases(), ButtonCases(), PenCases(), TextCases()}) {
    cases.insert(cases.end(), family.begin(), family.end());
  }
  return cases;
}

KeyCase KeyCaseOf(int index) {
  const std::vector<KeyCase> cases = AllKeyCases();
  const auto found = std::ranges::find(cases, index, &KeyCase::index);
  if (found == cases.end()) throw std::out_of_range("no key case");
  return *found;
}

}  // namespace settings_test
