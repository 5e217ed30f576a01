#include <functional>

#include "integration/settings/key_cases.h"

namespace settings_test {
namespace {

KeyCase Version(
    int index, int otherIndex,
    const std::function<Fired(const std::wstring& own, const std::wstring& other)>& shown) {
  return Script(index)
      .Silent(L"")
      .Fires(L"1.2", {shown(L"1.2", L"")})
      .Silent(L"1.2")
      .Other(otherIndex, L"3.4", {shown(L"1.2", L"3.4")})
      .Fires(L"1.2.3", {shown(L"1.2.3", L"3.4")})
      .Fires(L"", {shown(L"", L"3.4")})
      .Silent(L"");
}

// Fires with every message, and with all that the list holds.
KeyCase FunctionOptions(int index, int slot) {
  const auto fired = [slot](const std::vector<arguments::Option>& options) {
    return std::vector<Fired>{{slot, arguments::Options(options)}};
  };
  return Script(index)
      .Fires(L"", fired({}))
      .Fires(LR"({"5":"Pan"}{"2":"Zoom"})", fired({{2, L"Zoom"}, {5, L"Pan"}}))
      .Fires(LR"({"5":"Pan"}{"2":"Zoom"})", fired({{2, L"Zoom"}, {5, L"Pan"}}))
      .Fires(LR"({"5":"Scroll"})", fired({{2, L"Zoom"}, {5, L"Scroll"}}))
      .Silent(LR"({"abc":"Bad"})")
      .Silent(LR"({"12345678901":"Bad"})")
      .Silent(LR"({"":"Bad"})")
      .Fires(L"", fired({{2, L"Zoom"}, {5, L"Scroll"}}))
      .Fires(LR"({"-3":"Undo"})", fired({{-3, L"Undo"}, {2, L"Zoom"}, {5, L"Scroll"}}));
}

std::vector<Fired> Applications(const std::vector<std::wstring>& names) {
  std::vector<arguments::Option> options;
  for (const std::wstring& name : names) options.push_back({88, name});
  return {{kOnRunAppOptions, arguments::Options(options)}};
}

std::vector<Fired> Monitors(const std::vector<arguments::Monitor>& monitors) {
  return {{kOnMonitors, arguments::Monitors(monitors, -1)}};
}

}  // namespace

std::vector<KeyCase> TextCases() {
  const auto zoomMap = [](const std::vector<KorvuISD_ZoomMapEntry>& entries) {
    return std::vector<Fired>{{kOnZoomMap, arguments::ZoomMap(entries)}};
  };
  const auto text = [](int slot, const std::wstring& shown) {
    return std::vector<Fired>{{slot, arguments::Text(shown)}};
  };
  return {
      Version(kServiceVersion, kHidRouterVersion,
              [](const std::wstring& own, const std::wstring& other) {
                return Fired{kOnVersions, arguments::Versions(other, own)};
              }),
      Version(kHidRouterVersion, kServiceVersion,
              [](const std::wstring& own, const std::wstring& other) {
                return Fired{kOnVersions, arguments::Versions(own, other)};
              }),

      FunctionOptions(kTopSingleOptions, kOnTopSingleOptions),
      FunctionOptions(kTopDoubleOptions, kOnTopDoubleOptions),
      FunctionOptions(kTopLongOptions, kOnTopLongOptions),
      FunctionOptions(kSideSwitchOptions, kOnSideSwitchOptions),
      FunctionOptions(kWedgeOptions, kOnWedgeOptions),
      FunctionOptions(kUndockOptions, kOnUndockOptions),
      Script(kRunAppOptions)
          .Fires(L"", Applications({}))
          .Fires(LR"({"c:\b.exe":"Paint"}{"c:\a.exe":"Notes"})", Applications({L"Notes", L"Paint"}))
          .Fires(LR"({"c:\b.exe":"Paint"}{"c:\a.exe":"Notes"})", Applications({L"Notes", L"Paint"}))
          .Fires(LR"({"12":"Calculator"})", Applications({L"Calculator", L"Notes", L"Paint"}))
          .Fires(L"", Applications({L"Calculator", L"Notes", L"Paint"})),
      Script(kMonitors)
          .Fires(L"", Monitors({}))
          .Fires(LR"({"path 2":"Left"}{"path 1":"Right"})",
                 Monitors({{L"path 2", L"Left"}, {L"path 1", L"Right"}}))
          .Fires(LR"({"path 2":"Left"}{"path 1":"Right"})",
                 Monitors({{L"path 2", L"Left"}, {L"path 1", L"Right"}}))
          .Fires(LR"({"path 3":"Right"})", Monitors({{L"path 3", L"Right"}}))
          .Fires(L"", Monitors({})),

      // A new capture is news even if it is the same.
      Script(kKeystrokes)
          .Fires(L"", text(kOnKeystrokes, L""))
          .Fires(L"Ctrl+Z", text(kOnKeystrokes, L"Ctrl+Z"))
          .Fires(L"Ctrl+Z", text(kOnKeystrokes, L"Ctrl+Z"))
          .Fires(L"abc", text(kOnKeystrokes, L"abc"))
          .Fires(L"", text(kOnKeystrokes, L"")),
      Script(kEntities).Silent(L"abc").Silent(L"abc").Silent(L"").Silent(L"defg"),

      Script(kZoomMap)
          .Silent(L"")
          .Fires(L"{ 0, 0, 1920, 1080 }", zoomMap({{0, 0, 1920, 1080}}))
          .Silent(L"{ 0, 0, 1920, 1080 }")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"{ 0, 0, 1920, abc }")
          .Silent(L"{ 0, 0, 1920, 12345678901 }")
          .Silent(L"{ 0, 0, 1920, 1080 }")
          .Fires(L"{ -1, 2, -300, 4 }", zoomMap({{-1, 2, -300, 4}})),
      Script(kDisplayPath)
          .Silent(L"")
          .Fires(L"path 1", text(kOnDisplayPath, L"path 1"))
          .Silent(L"path 1")
          .Fires(L"Path 1", text(kOnDisplayPath, L"Path 1"))
          .Fires(L"", text(kOnDisplayPath, L""))
          .Silent(L""),
  };
}

}  // namespace settings_test
