#include "transport/manual_requests.h"

#include <array>
#include <cstddef>

namespace KorvuISD {

void AnswerManualRequest(const ManualCallbacks& callbacks, std::wstring_view requestPart,
                         std::wstring_view replyValue) {
  if (callbacks.empty()) return;
  std::wstring text;
  text.reserve(requestPart.size() + replyValue.size());
  text.append(requestPart).append(replyValue);
  for (const auto& [context, callback] : callbacks) {
    std::array<size_t, 2> partLengths = {requestPart.size(), replyValue.size()};
    callback(context, text.c_str(), partLengths.data(), partLengths.size());
  }
}

}  // namespace KorvuISD
