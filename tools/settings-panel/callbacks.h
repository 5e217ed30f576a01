// The library's callbacks as letters.
#pragma once

#include "korvu/settings.hpp"
#include "model/mailbox.h"

namespace tool::panel {

korvu::Callbacks CallbacksInto(Mailbox& mailbox);

}  // namespace tool::panel
