// The zoom map: a text is refused with one of two exceptions, or it is a map that can be written
// and read again.

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <vector>

#include "fuzz_input.h"
#include "settings/zoom_map.h"

using namespace KorvuISD;

namespace {

using Map = std::vector<KorvuISD_ZoomMapEntry>;

bool AreEqual(const Map& x, const Map& y) {
  return std::ranges::equal(x, y, [](const auto& left, const auto& right) {
    return left.a == right.a && left.b == right.b && left.c == right.c && left.d == right.d;
  });
}

std::wstring Format(const Map& map) {
  std::wstring text;
  for (const KorvuISD_ZoomMapEntry& entry : map) text += FormatZoomMapEntry(entry);
  return text;
}

size_t CountOf(std::wstring_view part, std::wstring_view text) {
  size_t count = 0;
  for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text = fuzz::Text({data, size});
  Map map;
  try {
    map = ParseZoomMap(text);
  } catch (const std::invalid_argument&) {
    return 0;
  } catch (const std::out_of_range&) {
    return 0;
  }
  const std::wstring written = Format(map);
  fuzz::Check(AreEqual(ParseZoomMap(written), map), "a written map is read as it was");
  fuzz::Check(CountOf(L" }", text) == map.size(), "every entry is read");
  return 0;
}
