// What the library told, copied: the callbacks write letters, and the window reads them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace tool::panel {

// Settings are named by their place in the key table (keys.h).

// A number or a switch.
struct Number {
  size_t key = 0;
  int32_t value = 0;
};

// A button of the pen or the dock; `key` is that of its function.
struct Button {
  size_t key = 0;
  int32_t code = 0;
  std::wstring name;
};

// A wedge of the radial menu has changed. The callback does not say which.
struct WedgeChanged {};

// What the service answered to a value request of ours.
struct Answer {
  size_t key = 0;
  std::wstring value;
};

struct Function {
  int32_t code = 0;
  std::wstring name;

  bool operator==(const Function&) const = default;
};

enum class OptionList {
  kEraserSingle,
  kEraserDouble,
  kEraserLong,
  kSideSwitch,
  kWedge,
  kUndock,
  kApplication,
};
inline constexpr size_t kOptionListCount = 7;

struct Options {
  OptionList list = OptionList::kEraserSingle;
  std::vector<Function> functions;
};

struct ZoomArea {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  bool operator==(const ZoomArea&) const = default;
};

struct ZoomMap {
  std::vector<ZoomArea> areas;
};

struct Monitor {
  std::wstring path;
  std::wstring name;

  bool operator==(const Monitor&) const = default;
};

struct Monitors {
  std::vector<Monitor> monitors;
};

// The display of opaque mode.
struct DisplayPath {
  std::wstring path;
};

struct Versions {
  std::wstring hidRouter;
  std::wstring service;
};

struct Pen {
  std::wstring serialNumber = {};
  std::wstring penId = {};
  std::wstring moduleId = {};
  std::wstring moduleVersion = {};
  std::wstring firmwareVersion = {};
  int32_t batteryStatus = -1;
  uint8_t batteryCharging = 0;
  bool isNear = false;
  bool isModuleConnected = false;
  bool isDocked = false;

  bool operator==(const Pen&) const = default;
};

// How many wedges a ring shows; the rings count from 0.
struct RingSize {
  int32_t ring = 0;
  uint8_t count = 0;
};

struct Feature {
  int32_t feature = 0;
  bool isSupported = false;
};

struct CapturedKeys {
  std::wstring text;
};

// What a capture has ended with, as a function of keystrokes takes it.
struct KeySequence {
  std::wstring text;
};

// The connection was opened for the first time.
struct Connected {};

// The answer to Presence's question.
struct SignOfLife {
  bool isAlive = false;
};

using Letter = std::variant<Number, Button, WedgeChanged, Answer, Options, ZoomMap, Monitors,
                            DisplayPath, Versions, Pen, RingSize, Feature, CapturedKeys,
                            KeySequence, Connected, SignOfLife>;

// Whether the second letter makes the first one old news.
bool AreAboutTheSame(const Letter& first, const Letter& second);

// Whether it may tell that a change was stored.
bool IsReceipt(const Letter& letter);

}  // namespace tool::panel
