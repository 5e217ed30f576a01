// What the service offers: every setting with its default, the names of functions, the option
// lists. The built-in catalogue is catalogue.json, compiled in; README.md describes its form.
#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tool::service {

enum class SettingKind {
  kPlain,
  kOptionList,  // the items, {"code":"name"} each, without the brackets around them
  // The four of a button; the other three keys follow from the function's.
  kButtonFunction,
  kButtonAppPath,
  kButtonName,
  kButtonKeystrokes,
};

struct Setting {
  SettingKind kind;
  std::wstring defaultValue;
};

// By key as it stands in messages, with two backslashes between its parts.
using SettingMap = std::map<std::wstring, Setting, std::less<>>;

class CatalogueError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Catalogue {
 public:
  static const Catalogue& BuiltIn();

  // Throws CatalogueError.
  explicit Catalogue(std::string_view json);

  const SettingMap& Settings() const { return settings; }
  const Setting* Find(std::wstring_view key) const;

  // What the service calls a button with this function.
  std::wstring FunctionName(std::wstring_view code) const;

 private:
  SettingMap settings;
  std::map<std::wstring, std::wstring, std::less<>> functionNames;
};

// The keys of one button.
struct ButtonKeys {
  std::wstring function;
  std::wstring appPath;
  std::wstring name;
  std::wstring keystrokes;
};

// Of the button that has `key`, a key of one of the four kinds.
ButtonKeys ButtonKeysOf(std::wstring_view key);

}  // namespace tool::service
