#include "values.h"

#include <utility>

namespace korvu_node {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

napi_value Arguments::Next() {
  if (values.empty()) return nullptr;
  const napi_value value = values.front();
  values = values.subspan(1);
  return value;
}

int32_t Arguments::Int32() {
  int32_t number = 0;
  if (nodeApi.napi_get_value_int32(env, Next(), &number) != napi_ok) isWrong = true;
  return number;
}

uint64_t Arguments::Identifier() {
  int64_t number = 0;
  if (nodeApi.napi_get_value_int64(env, Next(), &number) != napi_ok) isWrong = true;
  return static_cast<uint64_t>(number);
}

bool Arguments::Bool() {
  bool flag = false;
  if (nodeApi.napi_get_value_bool(env, Next(), &flag) != napi_ok) isWrong = true;
  return flag;
}

std::optional<std::wstring> Arguments::TextOrNull() {
  const napi_value value = Next();
  napi_valuetype type = napi_undefined;
  if (nodeApi.napi_typeof(env, value, &type) == napi_ok && type == napi_null) return std::nullopt;
  // Code unit for code unit, lone surrogates too.
  size_t length = 0;
  if (nodeApi.napi_get_value_string_utf16(env, value, nullptr, 0, &length) != napi_ok) {
    isWrong = true;
    return std::wstring();
  }
  std::wstring text(length + 1, L'\0');
  nodeApi.napi_get_value_string_utf16(env, value, reinterpret_cast<char16_t*>(text.data()),
                                      text.size(), &length);
  text.resize(length);
  return text;
}

std::wstring Arguments::Text() {
  std::optional<std::wstring> text = TextOrNull();
  if (!text) isWrong = true;
  return std::move(text).value_or(std::wstring());
}

napi_value ToValue(napi_env env, double number) {
  napi_value value = nullptr;
  nodeApi.napi_create_double(env, number, &value);
  return value;
}

napi_value ToValue(napi_env env, std::wstring_view text) {
  napi_value value = nullptr;
  nodeApi.napi_create_string_utf16(env, reinterpret_cast<const char16_t*>(text.data()), text.size(),
                                   &value);
  return value;
}

napi_value ToValue(napi_env env, const Letter& letter) {
  napi_value fields = nullptr;
  nodeApi.napi_create_array_with_length(env, letter.fields.size(), &fields);
  uint32_t index = 0;
  for (const Field& field : letter.fields) {
    const napi_value value =
        std::visit([&](const auto& held) { return ToValue(env, held); }, field);
    nodeApi.napi_set_element(env, fields, index++, value);
  }
  napi_value result = nullptr;
  nodeApi.napi_create_array_with_length(env, 3, &result);
  nodeApi.napi_set_element(env, result, 0, ToValue(env, static_cast<double>(letter.kind)));
  nodeApi.napi_set_element(env, result, 1, ToValue(env, static_cast<double>(letter.address)));
  nodeApi.napi_set_element(env, result, 2, fields);
  return result;
}

}  // namespace korvu_node
