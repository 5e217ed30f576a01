#include "model/letters.h"

#include <type_traits>

namespace tool::panel {

bool AreAboutTheSame(const Letter& first, const Letter& second) {
  if (first.index() != second.index()) return false;
  return std::visit(
      [&](const auto& one) {
        using Kind = std::decay_t<decltype(one)>;
        const Kind& other = std::get<Kind>(second);
        if constexpr (requires { one.key; }) {
          return one.key == other.key;
        } else if constexpr (std::is_same_v<Kind, Options>) {
          return one.list == other.list;
        } else if constexpr (std::is_same_v<Kind, Pen>) {
          return one.serialNumber == other.serialNumber;
        } else if constexpr (std::is_same_v<Kind, RingSize>) {
          return one.ring == other.ring;
        } else if constexpr (std::is_same_v<Kind, Feature>) {
          return one.feature == other.feature;
        } else {
          return true;
        }
      },
      first);
}

bool IsReceipt(const Letter& letter) {
  return std::holds_alternative<Number>(letter) || std::holds_alternative<Button>(letter) ||
         std::holds_alternative<Answer>(letter) || std::holds_alternative<ZoomMap>(letter) ||
         std::holds_alternative<DisplayPath>(letter) || std::holds_alternative<RingSize>(letter);
}

}  // namespace tool::panel
