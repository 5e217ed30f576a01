// Everything that the window shows: what was told, and what was changed and is not confirmed yet.
//
// Nothing is known before the service has told it, and the library calls back for values that
// differ from the ones it starts with, which are 0, off and empty: these are the values here, too.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/changes.h"
#include "model/letters.h"

namespace tool::panel {

// What a button or a wedge does.
struct Assignment {
  Function function;
  // The keys, or the application; known where the function wants one and the service was asked.
  std::optional<std::wstring> keystrokes;
  std::optional<std::wstring> application;
};

class Model {
 public:
  void Apply(const Letter& letter);
  bool OnTime(Clock::time_point now) { return changes.OnTime(now); }

  // What was told.
  int32_t ToldNumber(size_t key) const;
  // What is wanted while a change is pending, else what was told.
  int32_t Number(size_t key) const;
  const Assignment& AssignmentOf(size_t functionKey) const;
  const std::vector<Function>& OptionsOf(OptionList list) const;
  const std::vector<ZoomArea>& ZoomAreas() const { return zoomAreas; }
  const std::vector<Monitor>& Monitors() const { return monitors; }
  // As Number: wanted or told.
  const std::wstring& DisplayPath() const;
  const Versions& DriverVersions() const { return versions; }
  const std::map<std::wstring, Pen>& Pens() const { return pens; }
  bool IsSupported(int32_t feature) const;
  const std::wstring& CapturedKeys() const { return capturedKeys; }

  const Changes& GetChanges() const { return changes; }
  // The setter has been called with this.
  void Want(size_t key, std::wstring value, Clock::time_point now);

 private:
  void Tell(size_t key, const std::wstring& value);
  void Read(const struct Number& number);
  void Read(const Button& button);
  void Read(const Answer& answer);
  void Read(const Options& told) { options.at(static_cast<size_t>(told.list)) = told.functions; }
  void Read(const ZoomMap& map);
  void Read(const struct Monitors& told) { monitors = told.monitors; }
  void Read(const struct DisplayPath& told);
  void Read(const Versions& told) { versions = told; }
  void Read(const Pen& pen);
  void Read(const RingSize& size);
  void Read(const Feature& feature) { features[feature.feature] = feature.isSupported; }
  void Read(const struct CapturedKeys& keys) { capturedKeys = keys.text; }
  void Read(const WedgeChanged&) {}
  void Read(const KeySequence&) {}
  void Read(const Connected&) {}
  void Read(const SignOfLife&) {}

  Changes changes;
  std::map<size_t, int32_t> numbers;
  std::map<size_t, Assignment> assignments;  // by the key of the function
  std::array<std::vector<Function>, kOptionListCount> options;
  std::vector<ZoomArea> zoomAreas;
  std::vector<Monitor> monitors;
  std::wstring displayPath;
  Versions versions;
  std::map<std::wstring, Pen> pens;  // by serial number
  std::map<int32_t, bool> features;
  std::wstring capturedKeys;
};

// How a zoom map of one area is written for Want.
std::wstring TextOf(const ZoomArea& area);

// The number at the beginning of a text, as the service stores numbers; nothing if there is none.
std::optional<int32_t> NumberIn(const std::wstring& text);

// Whether the code's function wants keys, or an application.
bool WantsKeys(int32_t code);
bool WantsApplication(int32_t code);

}  // namespace tool::panel
