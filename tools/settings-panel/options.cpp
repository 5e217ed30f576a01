#include "options.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tool::panel {
namespace {

// In the order of the tabs.
constexpr std::array<std::wstring_view, 5> kPageNames = {L"pen", L"buttons", L"radial", L"display",
                                                         L"devices"};

}  // namespace

const wchar_t* const kHelp =
    L"korvu-settings-panel [--page NAME] [--trace] [--help]\n"
    L"\n"
    L"Shows and changes the settings of the pen tablet.\n"
    L"\n"
    L"--page NAME  begins with pen, buttons, radial, display or devices.\n"
    L"--trace      records each step of the library in a file in c:\\korvu. It holds all values,\n"
    L"             keys that a button types among them.\n"
    L"--help       shows this text.\n"
    L"\n"
    L"If a panel is open already, it comes to the front instead of a second one.\n";

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
  CommandLine line;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    std::wstring wrong;
    if (*argument == L"--trace") {
      line.isTracing = true;
    } else if (*argument == L"--help" || *argument == L"-h" || *argument == L"/?") {
      line.wantsHelp = true;
    } else if (*argument == L"--page" && argument + 1 != arguments.end()) {
      ++argument;
      const auto page = std::find(kPageNames.begin(), kPageNames.end(), *argument);
      if (page == kPageNames.end()) wrong = L"--page " + *argument;
      line.page = static_cast<int>(page - kPageNames.begin());
    } else {
      wrong = *argument;
    }
    if (line.wrong.empty()) line.wrong = wrong;
  }
  return line;
}

}  // namespace tool::panel
