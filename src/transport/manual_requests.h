// Manual requests whose reply the application waits for.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "KorvuTabletSettingsAPI.h"

namespace KorvuISD {

// Who waits for the reply to one message, in the order in which they are called.
using ManualCallbacks = std::map<void*, ManualReplyCallback>;

// Used under g_apiMutex. Whoever takes callbacks out must call them, once, without the lock.
class ManualRequests {
 public:
  // Takes the place of an earlier registration of the same message and context.
  void Register(const std::wstring& message, void* context, ManualReplyCallback callback) {
    manualRequests[message][context] = callback;
  }

  // As if Register had not been called.
  void Forget(const std::wstring& message, void* context) {
    const auto entry = manualRequests.find(message);
    if (entry == manualRequests.end()) return;
    entry->second.erase(context);
    if (entry->second.empty()) manualRequests.erase(entry);
  }

  // All callbacks of a message; several queued copies of it are answered together.
  ManualCallbacks Take(const std::wstring& message) {
    auto entry = manualRequests.extract(message);
    return entry ? std::move(entry.mapped()) : ManualCallbacks();
  }

  using All = std::map<std::wstring, ManualCallbacks>;
  All TakeAll() { return std::exchange(manualRequests, {}); }

 private:
  All manualRequests;
};

// Hands the two parts of a reply to each callback. Throws if there is no memory for their text;
// then each callback has had two empty parts.
void AnswerManualRequest(const ManualCallbacks& callbacks, std::wstring_view requestPart,
                         std::wstring_view replyValue);

}  // namespace KorvuISD
