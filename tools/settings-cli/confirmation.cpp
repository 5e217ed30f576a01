#include "settings-cli/confirmation.h"

#include <optional>
#include <utility>

#include <fmt/core.h>

#include "shared/keys.h"

namespace tool::cli {

std::vector<std::wstring> StoreAndRead(Session& session, std::string_view what,
                                       const std::function<void()>& set,
                                       std::span<const size_t> keys) {
  // Before that, the library's own value requests are still queued: one of them, sent before the
  // change, would be answered in the place of ours.
  session.WaitForValues();
  set();
  std::vector<std::wstring> requests;
  for (const size_t key : keys) requests.push_back(ValueRequest(key));
  // The service refuses a message by not acknowledging it. The library then drops the connection
  // with all that is queued on it, so these requests fail as well.
  std::vector<std::wstring> stored;
  for (std::optional<std::wstring>& reply : session.Ask(requests)) {
    if (!reply) {
      throw Failure(ExitCode::kNotConfirmed,
                    fmt::format("the service did not confirm the change of {}: it refused it, or "
                                "went away. 'korvu-settings list' tells what it has stored",
                                what));
    }
    stored.push_back(std::move(*reply));
  }
  return stored;
}

Failure StoredOtherwise(std::string_view what, std::string_view wanted, std::string_view stored) {
  return Failure(ExitCode::kNotConfirmed,
                 fmt::format("the service did not store {} for {}; it has {}. It may not support "
                             "that value",
                             wanted, what, stored));
}

}  // namespace tool::cli
