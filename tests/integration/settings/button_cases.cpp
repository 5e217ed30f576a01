#include <functional>

#include "integration/settings/key_cases.h"

namespace settings_test {
namespace {

// How a button's record reaches the application.
using Shown = std::function<Fired(int32_t function, const std::wstring& name)>;

// Reports nothing by itself; the name that follows shows what it did.
KeyCase Function(int index, const Shown& shown) {
  const int name = NameOf(index);
  return Script(index)
      .Silent(L"7")
      .Other(name, L"Pan", {shown(7, L"Pan")})
      .Silent(L"7")
      .Other(name, L"Pan")  // the same code has left the name alone
      .Silent(L"8")
      .Other(name, L"Pan", {shown(8, L"Pan")})  // another code has cleared it
      .Silent(L"")
      .Unconvertible()
      .Other(name, L"Pan")
      .Other(name, L"Zoom", {shown(8, L"Zoom")})
      .Silent(L"9")
      .Other(name, L"")  // the name is already empty
      .Silent(L" -12abc")
      .Other(name, L"Undo", {shown(-12, L"Undo")});
}

KeyCase Name(int index, const Shown& shown) {
  return Script(index)
      .Silent(L"")  // as it is at first
      .Fires(L"Pan", {shown(0, L"Pan")})
      .Silent(L"Pan")
      .Fires(L"pan", {shown(0, L"pan")})
      .Fires(L"", {shown(0, L"")})
      .Silent(L"")
      .Fires(L"Pan and zoom", {shown(0, L"Pan and zoom")})
      .Fires(L"Pan", {shown(0, L"Pan")});  // nothing is left of the longer name
}

void Add(std::vector<KeyCase>& cases, int function, const Shown& shown) {
  cases.push_back(Function(function, shown));
  cases.push_back(Name(NameOf(function), shown));
}

}  // namespace

std::vector<KeyCase> ButtonCases() {
  const auto button = [](int slot) {
    return [slot](int32_t function, const std::wstring& name) {
      return Fired{slot, arguments::Button(function, name)};
    };
  };
  const auto sideSwitch = [](int slot) {
    return [slot](int32_t function, const std::wstring& name) {
      return Fired{slot, arguments::SideSwitch(function, name, 0)};
    };
  };
  const auto wedge = [](int32_t function, const std::wstring& name) {
    return Fired{kOnWedgeEx, arguments::Wedge(function, name)};
  };

  std::vector<KeyCase> cases;
  Add(cases, kEraserSingle, button(kOnEraserSingle));
  Add(cases, kEraserDouble, button(kOnEraserDouble));
  Add(cases, kEraserLong, button(kOnEraserLong));
  Add(cases, kUpperSwitch, sideSwitch(kOnUpperSwitch));
  Add(cases, kLowerSwitch, sideSwitch(kOnLowerSwitch));
  Add(cases, kAutoExecute, button(kOnAutoExecute));
  for (int number = 0; number < 16; ++number) Add(cases, WedgeFunction(number), wedge);
  return cases;
}

}  // namespace settings_test
