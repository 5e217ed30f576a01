// The record of callbacks that the tool registers: each copies its arguments into the inbox.
#pragma once

#include "KorvuTabletSettingsAPI.h"

namespace tool::cli {

// The context of the registration must be the Inbox.
KorvuISD_Callbacks CallbacksIntoInbox();

}  // namespace tool::cli
