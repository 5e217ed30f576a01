// Manual requests whose reply the application waits for.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"

namespace KorvuISD {

// Who waits for the reply to one message, in the order in which they are called. Whoever takes them
// out of where they are kept must call them, once, without the lock.
using ManualCallbacks = std::map<void*, ManualReplyCallback>;

// By the text of the message.
using ManualRequests = std::map<std::wstring, ManualCallbacks>;

// Hands the two parts of a reply to each callback. Throws if there is no memory for their text;
// then each callback has had two empty parts.
void AnswerManualRequest(const ManualCallbacks& callbacks, std::wstring_view requestPart,
                         std::wstring_view replyValue);

}  // namespace KorvuISD
