// What the library's threads and ours tell the script.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace korvu_node {

using Field = std::variant<double, std::wstring>;

// Kinds 0 to 40 are the members of KorvuISD_Callbacks, in their order. lib/events.js knows these
// numbers, too.
enum LetterKind : uint32_t {
  kCallbackKinds = 41,
  kManualReply = 41,  // addressed by the number of the request
  kTaskDone = 42,     // addressed by the number of the task
};

struct Letter {
  uint32_t kind = 0;
  uint64_t address = 0;  // of a callback: the context of its registration
  std::vector<Field> fields;
};

}  // namespace korvu_node
