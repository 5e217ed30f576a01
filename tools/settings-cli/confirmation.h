// Changing a setting and making sure that it is stored.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"

namespace tool::cli {

// Calls the setter, once the connection is quiet, and returns what the service has stored under
// these keys afterwards. Throws Failure if the service refused the change or went away. `what` is
// how the user called the setting.
std::vector<std::wstring> StoreAndRead(Session& session, std::string_view what,
                                       const std::function<void()>& set,
                                       std::span<const size_t> keys);

// The service has stored something else.
Failure StoredOtherwise(std::string_view what, std::string_view wanted, std::string_view stored);

}  // namespace tool::cli
