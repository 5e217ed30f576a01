#include "model/model.h"

#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <utility>
#include <variant>

#include "KorvuTabletSettingsAPI.h"
#include "shared/keys.h"
#include "shared/pens.h"

namespace tool::panel {
namespace {

// A key of a button, split into that of its function and the place behind it.
struct ButtonKey {
  size_t functionKey;
  size_t offset;
};

// The buttons lie in groups of four keys; hover click has a key of its own among them.
std::optional<ButtonKey> ButtonKeyOf(size_t key) {
  for (const size_t first : {tool::kEraserSingleKey, tool::kEraserDoubleKey, tool::kEraserLongKey,
                             tool::kUpperButtonKey, tool::kLowerButtonKey, tool::kDockDetachKey}) {
    if (key >= first && key < first + tool::kKeysPerButton) return ButtonKey{first, key - first};
  }
  constexpr size_t kWedgeKeys = 2 * tool::kWedgesPerRing * tool::kKeysPerButton;
  if (key < tool::kFirstWedgeKey || key >= tool::kFirstWedgeKey + kWedgeKeys) return std::nullopt;
  const size_t offset = (key - tool::kFirstWedgeKey) % tool::kKeysPerButton;
  return ButtonKey{key - offset, offset};
}

}  // namespace

void Model::Apply(const Letter& letter) {
  std::visit([this](const auto& content) { Read(content); }, letter);
}

int32_t Model::ToldNumber(size_t key) const {
  const auto number = numbers.find(key);
  return number == numbers.end() ? 0 : number->second;
}

int32_t Model::Number(size_t key) const {
  const std::wstring* const wanted = changes.WantedOf(key);
  return wanted ? NumberIn(*wanted).value_or(0) : ToldNumber(key);
}

const Assignment& Model::AssignmentOf(size_t functionKey) const {
  static const Assignment kNone;
  const auto assignment = assignments.find(functionKey);
  return assignment == assignments.end() ? kNone : assignment->second;
}

const std::vector<Function>& Model::OptionsOf(OptionList list) const {
  return options.at(static_cast<size_t>(list));
}

const std::wstring& Model::DisplayPath() const {
  const std::wstring* const wanted = changes.WantedOf(tool::kOpaqueDisplayPathKey);
  return wanted ? *wanted : displayPath;
}

bool Model::IsSupported(int32_t feature) const {
  const auto found = features.find(feature);
  return found != features.end() && found->second;
}

void Model::Want(size_t key, std::wstring value, Clock::time_point now) {
  changes.Start(key, std::move(value), now);
}

void Model::Tell(size_t key, const std::wstring& value) {
  changes.OnTold(key, value);
}

void Model::Read(const struct Number& number) {
  numbers[number.key] = number.value;
  Tell(number.key, std::to_wstring(number.value));
}

void Model::Read(const Button& button) {
  assignments[button.key].function = {button.code, button.name};
  Tell(button.key, std::to_wstring(button.code));
}

void Model::Read(const Answer& answer) {
  const std::optional<ButtonKey> button = ButtonKeyOf(answer.key);
  if (!button) return;
  Assignment& assignment = assignments[button->functionKey];
  switch (button->offset) {
    case tool::kAppPathOffset:
      assignment.application = answer.value;
      break;
    case tool::kNameOffset:
      assignment.function.name = answer.value;
      break;
    case tool::kKeystrokesOffset:
      assignment.keystrokes = answer.value;
      break;
    default: {
      // With another function the name is another one, too, and comes after it.
      const int32_t code = NumberIn(answer.value).value_or(assignment.function.code);
      if (code != assignment.function.code) assignment.function = {code, L""};
      break;
    }
  }
  Tell(answer.key, answer.value);
}

void Model::Read(const ZoomMap& map) {
  zoomAreas = map.areas;
  Tell(tool::kZoomMapKey, zoomAreas.size() == 1 ? TextOf(zoomAreas.front()) : std::wstring());
}

void Model::Read(const struct DisplayPath& told) {
  displayPath = told.path;
  Tell(tool::kOpaqueDisplayPathKey, told.path);
}

void Model::Read(const Pen& pen) {
  NotePen(pens, pen);
}

void Model::Read(const RingSize& size) {
  Read(panel::Number{size.ring == 0 ? tool::kFirstRingCountKey : tool::kSecondRingCountKey,
                     size.count});
}

std::wstring TextOf(const ZoomArea& area) {
  return std::to_wstring(area.left) + L", " + std::to_wstring(area.top) + L", " +
         std::to_wstring(area.right) + L", " + std::to_wstring(area.bottom);
}

std::optional<int32_t> NumberIn(const std::wstring& text) {
  errno = 0;
  wchar_t* end = nullptr;
  const long long number = std::wcstoll(text.c_str(), &end, 10);
  if (end == text.c_str() || errno == ERANGE) return std::nullopt;
  if (number < std::numeric_limits<int32_t>::min() ||
      number > std::numeric_limits<int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<int32_t>(number);
}

bool WantsKeys(int32_t code) {
  return code == KORVUISD_FUNCTION_KEYSTROKES;
}

bool WantsApplication(int32_t code) {
  return code == KORVUISD_FUNCTION_RUN_APP;
}

}  // namespace tool::panel
