// The requests that every client makes, as texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bench {

// Keys as they stand in messages.
std::wstring_view TiltKey();

// The keys whose values a new connection asks for, in order.
std::vector<std::wstring_view> RequestedKeys();

// The probe and the value requests of a new connection.
std::vector<std::wstring> ConnectionBatch();

// What RunExchanges sends.
std::vector<std::wstring> ExchangeBatch(size_t pairs);

}  // namespace bench
