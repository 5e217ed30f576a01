// zoom A B C D: the display zoom map.

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/arguments.h"
#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/confirmation.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"
#include "settings-cli/text.h"
#include "shared/keys.h"

namespace tool::cli {
namespace {

constexpr std::string_view kWhat = "zoom";

struct Zoom {
  KorvuISD_ZoomPair first{};
  KorvuISD_ZoomPair second{};
  bool useDefault = false;
};

// What the service stores for a map of this one entry, but for the blanks.
std::string WithoutBlanks(const std::string& text) {
  std::string dense;
  for (const char letter : text) {
    if (letter != ' ') dense += letter;
  }
  return dense;
}

ExitCode ChangeZoom(Session& session, Terminal& terminal, const Zoom& zoom) {
  const std::array<size_t, 1> keys{kZoomMapKey};
  const auto set = [&] {
    KorvuISD_SetSlavedDisplayZoom(zoom.first, zoom.second, zoom.useDefault ? 1 : 0);
  };
  const std::string stored = OrQuotes(StoreAndRead(session, kWhat, set, keys).front());
  const std::string wanted = fmt::format("{{{},{},{},{}}}", zoom.first.first, zoom.first.second,
                                         zoom.second.first, zoom.second.second);
  if (!zoom.useDefault && WithoutBlanks(stored) != wanted) {
    throw StoredOtherwise(kWhat, wanted, stored);
  }
  terminal.out.Line(fmt::format("{} = {}", kWhat, stored));
  return ExitCode::kDone;
}

Zoom ParseZoom(const ZoomOptions& options) {
  constexpr std::array<std::string_view, 4> kNames{"A", "B", "C", "D"};
  std::array<int32_t, 4> numbers{};
  size_t count = 0;
  for (size_t at = 0; at < numbers.size(); ++at) {
    if (!options.numbers[at]) continue;
    numbers[at] = ParseNumber(kNames[at], *options.numbers[at], std::numeric_limits<int32_t>::min(),
                              std::numeric_limits<int32_t>::max());
    ++count;
  }
  if (count != (options.useDefault ? 0 : numbers.size())) {
    throw UsageError("zoom takes either the four numbers A B C D, or --default");
  }
  return {{numbers[0], numbers[1]}, {numbers[2], numbers[3]}, options.useDefault};
}

}  // namespace

Command SetZoom(const ZoomOptions& options) {
  Command command;
  command.changesSettings = true;
  command.run = [zoom = ParseZoom(options)](Session& session, Terminal& terminal) {
    return ChangeZoom(session, terminal, zoom);
  };
  return command;
}

}  // namespace tool::cli
