#include "session.h"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

#include "shared/keys.h"

namespace tool::panel {
namespace {

constexpr size_t kWedgeCount = 2 * tool::kWedgesPerRing;
constexpr size_t kLastWedgeKey = tool::kFirstWedgeKey + (kWedgeCount - 1) * tool::kKeysPerButton;

bool IsWedgeFunction(size_t key) {
  return key >= tool::kFirstWedgeKey && key <= kLastWedgeKey &&
         (key - tool::kFirstWedgeKey) % tool::kKeysPerButton == 0;
}

bool IsListed(const std::vector<Function>& applications, const std::wstring& name) {
  return std::any_of(applications.begin(), applications.end(),
                     [&](const Function& application) { return application.name == name; });
}

}  // namespace

AssignmentTarget WedgeTarget(int ring, int wedge) {
  const uint32_t id =
      KorvuISD_BuildMenuButtonId(static_cast<uint8_t>(ring), static_cast<uint8_t>(wedge));
  const size_t place =
      static_cast<size_t>(ring) * tool::kWedgesPerRing + static_cast<size_t>(wedge);
  return {tool::kFirstWedgeKey + place * tool::kKeysPerButton, OptionList::kWedge,
          [id](const ButtonFunctionValue* value) { KorvuISD_SetMenuOp(id, value, 0, nullptr); }};
}

bool Session::ReadMail(Clock::time_point now) {
  const std::vector<Letter> letters = mailbox.Take();
  for (const Letter& letter : letters) {
    model.Apply(letter);
    Follow(letter, now);
  }
  return !letters.empty();
}

bool Session::OnTime(Clock::time_point now) {
  const Presence::State before = presence.Get();
  Ask(presence.OnTime(now));
  const bool hasGivenUp = model.OnTime(now);
  return hasGivenUp || presence.Get() != before;
}

// What the callbacks do not bring is asked for.
void Session::Follow(const Letter& letter, Clock::time_point now) {
  if (const auto* button = std::get_if<Button>(&letter)) {
    AskForTexts(button->key, button->code);
  } else if (std::holds_alternative<WedgeChanged>(letter)) {
    AskForWedges();
  } else if (const auto* answer = std::get_if<Answer>(&letter)) {
    FollowAnswer(*answer);
  } else if (const auto* keys = std::get_if<KeySequence>(&letter)) {
    if (!keys->text.empty() && captureTarget.set) {
      Assign(captureTarget, KORVUISD_FUNCTION_KEYSTROKES, keys->text);
    }
  } else if (std::holds_alternative<Connected>(letter)) {
    Ask(presence.OnConnected(now));
  } else if (const auto* sign = std::get_if<SignOfLife>(&letter)) {
    const bool wasThere = CanChange();
    Ask(presence.OnAnswer(sign->isAlive, now));
    if (!wasThere && CanChange()) AskForAll();
  }
}

void Session::FollowAnswer(const Answer& answer) {
  if (!IsWedgeFunction(answer.key)) {
    if (answer.key != kLastWedgeKey + tool::kNameOffset) return;
    areWedgesAsked = false;
    if (std::exchange(areWedgesOutdated, false)) AskForWedges();
    return;
  }
  AskForTexts(answer.key, NumberIn(answer.value).value_or(0));
}

void Session::AskForTexts(size_t functionKey, int32_t code) {
  if (WantsKeys(code)) link.Ask(functionKey + tool::kKeystrokesOffset);
  if (WantsApplication(code)) link.Ask(functionKey + tool::kAppPathOffset);
}

// One round at a time: wedges may change faster than they are answered for.
void Session::AskForWedges() {
  if (areWedgesAsked) {
    areWedgesOutdated = true;
    return;
  }
  areWedgesAsked = true;
  for (size_t key = tool::kFirstWedgeKey; key <= kLastWedgeKey; key += tool::kKeysPerButton) {
    link.Ask(key);
    link.Ask(key + tool::kNameOffset);
  }
}

void Session::AskForAll() {
  areWedgesAsked = areWedgesOutdated =
      false;  // a connection that broke leaves questions unanswered
  AskForWedges();
  for (const size_t key : {tool::kEraserSingleKey, tool::kEraserDoubleKey, tool::kEraserLongKey,
                           tool::kUpperButtonKey, tool::kLowerButtonKey, tool::kDockDetachKey}) {
    AskForTexts(key, model.AssignmentOf(key).function.code);
  }
}

void Session::SetNumber(const tool::PlainSetting& setting, int32_t value) {
  if (value == model.Number(setting.key)) return;
  link.Do([set = setting.set, value] { set(value, 0); });
  model.Want(setting.key, std::to_wstring(value), Clock::now());
}

void Session::SetRingSize(int ring, int count) {
  const size_t key = ring == 0 ? tool::kFirstRingCountKey : tool::kSecondRingCountKey;
  if (count == model.Number(key)) return;
  link.Do([ring, count] {
    KorvuISD_SetMenuButtonLimit(KorvuISD_BuildMenuButtonId(static_cast<uint8_t>(ring), 0),
                                static_cast<uint8_t>(count));
  });
  model.Want(key, std::to_wstring(count), Clock::now());
}

void Session::Assign(const AssignmentTarget& target, int32_t code, const std::wstring& text) {
  ButtonFunctionValue value{};
  value.function = code;
  text.copy(value.text, KORVUISD_NAME_CAPACITY - 1);
  link.Do([set = target.set, value] { set(&value); });

  const Clock::time_point now = Clock::now();
  // The callback comes only where the name is another one; so the receipt is asked for.
  model.Want(target.functionKey, std::to_wstring(code), now);
  link.Ask(target.functionKey);
  link.Ask(target.functionKey + tool::kNameOffset);
  if (text.empty()) return;
  const size_t textKey =
      target.functionKey + (WantsKeys(code) ? tool::kKeystrokesOffset : tool::kAppPathOffset);
  // For an application of its list the library sends the path, which it does not tell us.
  const bool isListed =
      WantsApplication(code) && IsListed(model.OptionsOf(OptionList::kApplication), text);
  if (!isListed) model.Want(textKey, value.text, now);
  link.Ask(textKey);
}

void Session::SetZoom(const ZoomArea& area) {
  link.Do([area] {
    KorvuISD_SetSlavedDisplayZoom({area.left, area.top}, {area.right, area.bottom}, 0);
  });
  model.Want(tool::kZoomMapKey, TextOf(area), Clock::now());
}

// What the default is, only the service knows: the callback tells, if it is another one.
void Session::SetDefaultZoom() {
  link.Do([] { KorvuISD_SetSlavedDisplayZoom({}, {}, 1); });
}

void Session::SetDisplayPath(const std::wstring& path) {
  if (path == model.DisplayPath()) return;
  link.Do([path] { KorvuISD_SetOpaqueModeDisplayPath(path.c_str()); });
  model.Want(tool::kOpaqueDisplayPathKey, path, Clock::now());
}

void Session::StartKeyCapture() {
  model.Apply(CapturedKeys{});
  link.Do([] { KorvuISD_StartKeyCapture(); });
}

void Session::FinishKeyCapture(const AssignmentTarget& target) {
  captureTarget = target;
  link.Do([&mailbox = mailbox] {
    std::wstring buffer(KORVUISD_NAME_CAPACITY, L'\0');
    KorvuISD_FinishKeyCapture(buffer.data(), buffer.size() - 1);
    buffer.resize(buffer.find(L'\0'));
    mailbox.Put(KeySequence{std::move(buffer)});
  });
}

}  // namespace tool::panel
