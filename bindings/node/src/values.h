// Between the script's values and ours. All of it runs on the script's thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "letter.h"
#include "node_api.h"

namespace korvu_node {

// Reads the arguments of one call in order. The script's side has checked what they are; what is
// wrong all the same reads as 0 or as an empty text, and IsWrong tells of it.
class Arguments {
 public:
  Arguments(napi_env env, std::span<const napi_value> values) : env(env), values(values) {}

  // Of JavaScript's conversion to 32 bits, so that unsigned numbers pass as well.
  int32_t Int32();
  uint32_t Uint32() { return static_cast<uint32_t>(Int32()); }
  // A number that the script got from us, or counts itself: below 2 to the power of 53.
  uint64_t Identifier();
  bool Bool();
  std::wstring Text();
  // Nothing for null.
  std::optional<std::wstring> TextOrNull();

  bool IsWrong() const { return isWrong; }

 private:
  napi_value Next();

  napi_env env;
  std::span<const napi_value> values;
  bool isWrong = false;
};

napi_value ToValue(napi_env env, double number);
napi_value ToValue(napi_env env, std::wstring_view text);
napi_value ToValue(napi_env env, const Letter& letter);  // [kind, address, [field...]]

}  // namespace korvu_node
