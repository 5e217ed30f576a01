#include "transport/manual_requests.h"

#include <array>
#include <cstddef>
#include <new>

namespace KorvuISD {

void AnswerManualRequest(const ManualCallbacks& callbacks, std::wstring_view requestPart,
                         std::wstring_view replyValue) {
  if (callbacks.empty()) return;
  std::wstring text;
  try {
    text.reserve(requestPart.size() + replyValue.size());
  } catch (const std::bad_alloc&) {
    // The answer of a lost connection needs none.
    AnswerManualRequest(callbacks, {}, {});
    throw;
  }
  text.append(requestPart).append(replyValue);
  for (const auto& [context, callback] : callbacks) {
    std::array<size_t, 2> partLengths = {requestPart.size(), replyValue.size()};
    callback(context, text.c_str(), partLengths.data(), partLengths.size());
  }
}

}  // namespace KorvuISD
