#include "setters.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvu_node {
namespace {

// A ButtonFunctionValue whose text may be longer than its array: the library reads on to the
// terminator, wherever that is.
class FunctionValue {
 public:
  FunctionValue(int32_t function, const std::wstring& text)
      : block(std::max(sizeof(ButtonFunctionValue) / sizeof(wchar_t),
                       kTextOffset + text.size() + 1)) {
    std::memcpy(block.data(), &function, sizeof function);
    std::copy(text.begin(), text.end(), block.begin() + kTextOffset);
  }
  const ButtonFunctionValue* Get() const {
    return reinterpret_cast<const ButtonFunctionValue*>(block.data());
  }

 private:
  static constexpr size_t kTextOffset = offsetof(ButtonFunctionValue, text) / sizeof(wchar_t);
  std::vector<wchar_t> block;
};

template <class... Parameters>
using Export = void(KORVUISD_CALL*)(Parameters...);

template <class Function>
Function As(const Setter& setter) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(setter.function));
}

// A task that calls and has nothing to say but that it is done.
template <class Call>
Task Silent(Call call) {
  return [call = std::move(call)] {
    call();
    return std::vector<Field>();
  };
}

// (function, text, empty)
FunctionValue ReadFunction(Arguments& arguments) {
  const int32_t function = arguments.Int32();
  return {function, arguments.Text()};
}

}  // namespace

const Setter* FindSetter(std::wstring_view name) {
  const auto found = std::ranges::find_if(library.setters, [&](const Setter& setter) {
    return std::ranges::equal(std::string_view(setter.name), name, {},
                              [](char letter) { return static_cast<wchar_t>(letter); });
  });
  return found == library.setters.end() ? nullptr : &*found;
}

Task SetterCall(const Setter& setter, Arguments& arguments) {
  switch (setter.form) {
    case SetterForm::kNothing: {
      const auto call = As<Export<>>(setter);
      return Silent(call);
    }
    case SetterForm::kNumber: {
      const auto call = As<Export<int32_t>>(setter);
      return Silent([call, value = arguments.Int32()] { call(value); });
    }
    case SetterForm::kNumberOrEmpty: {
      const auto call = As<Export<int32_t, int32_t>>(setter);
      const int32_t value = arguments.Int32();
      return Silent([call, value, empty = arguments.Bool()] { call(value, empty); });
    }
    case SetterForm::kText: {
      const auto call = As<Export<const wchar_t*>>(setter);
      return Silent([call, text = arguments.Text()] { call(text.c_str()); });
    }
    case SetterForm::kButton: {
      const auto call = As<Export<const ButtonFunctionValue*, int32_t>>(setter);
      const FunctionValue value = ReadFunction(arguments);
      return Silent([call, value, empty = arguments.Bool()] { call(value.Get(), empty); });
    }
    case SetterForm::kWedge: {
      const auto call =
          As<Export<uint32_t, const ButtonFunctionValue*, int32_t, const wchar_t*>>(setter);
      const uint32_t id = arguments.Uint32();
      const FunctionValue value = ReadFunction(arguments);
      const bool empty = arguments.Bool();
      return Silent([call, id, value, empty, name = arguments.TextOrNull()] {
        call(id, value.Get(), empty, name ? name->c_str() : nullptr);
      });
    }
    case SetterForm::kWedgeLimit: {
      const auto call = As<Export<uint32_t, uint8_t>>(setter);
      const uint32_t id = arguments.Uint32();
      return Silent(
          [call, id, limit = static_cast<uint8_t>(arguments.Uint32())] { call(id, limit); });
    }
    case SetterForm::kZoom: {
      const auto call = As<Export<KorvuISD_ZoomPair, KorvuISD_ZoomPair, int32_t>>(setter);
      KorvuISD_ZoomPair first{};
      KorvuISD_ZoomPair second{};
      for (int32_t* number : {&first.first, &first.second, &second.first, &second.second}) {
        *number = arguments.Int32();
      }
      return Silent(
          [call, first, second, empty = arguments.Bool()] { call(first, second, empty); });
    }
  }
  return {};
}

}  // namespace korvu_node
