// menu RING WEDGE CODE [TEXT], menu-limit RING N: the radial menu.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/arguments.h"
#include "settings-cli/assignment.h"
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

ExitCode ChangeLimit(Session& session, Terminal& terminal, uint8_t ring, uint8_t limit) {
  const std::string what = fmt::format("menu-limit {}", ring + 1);
  const std::array<size_t, 1> keys{ring == 0 ? kFirstRingCountKey : kSecondRingCountKey};
  const auto set = [&] { KorvuISD_SetMenuButtonLimit(KorvuISD_BuildMenuButtonId(ring, 0), limit); };
  const std::string stored = OrQuotes(StoreAndRead(session, what, set, keys).front());
  const std::string wanted = fmt::format("{}", limit);
  if (stored != wanted) throw StoredOtherwise(what, wanted, stored);
  terminal.out.Line(fmt::format("{} = {}", what, stored));
  return ExitCode::kDone;
}

}  // namespace

Command SetWedge(const MenuOptions& options) {
  const uint8_t ring = ParseRing(options.ring);
  const uint8_t wedge = ParseWedge(options.wedge);
  const uint32_t id = KorvuISD_BuildMenuButtonId(ring, wedge);
  return ChangeAssignment(
      fmt::format("menu {} {}", ring + 1, WedgeName(wedge)),
      kFirstWedgeKey + kKeysPerButton * (ring * kWedgesPerRing + wedge),
      ParseAssignment(options.assignment),
      [id](const ButtonFunctionValue* value, int32_t empty, const wchar_t* name) {
        KorvuISD_SetMenuOp(id, value, empty, name);
      });
}

Command SetMenuLimit(const MenuLimitOptions& options) {
  const uint8_t ring = ParseRing(options.ring);
  const auto limit =
      static_cast<uint8_t>(ParseNumber("N", options.limit, 0, static_cast<int>(kWedgesPerRing)));
  Command command;
  command.changesSettings = true;
  command.run = [ring, limit](Session& session, Terminal& terminal) {
    return ChangeLimit(session, terminal, ring, limit);
  };
  return command;
}

}  // namespace tool::cli
