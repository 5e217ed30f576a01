#include "status_text.h"

namespace tool::panel {

std::wstring StatusText(Presence::State state, const std::wstring& serviceVersion) {
  switch (state) {
    case Presence::State::kSearching:
      return L"No settings service yet. Waiting for it\x2026";
    case Presence::State::kReading:
      return L"Connected to the settings service. Reading its settings\x2026";
    case Presence::State::kThere:
      return serviceVersion.empty() ? L"Connected to the settings service."
                                    : L"Connected to the settings service " + serviceVersion + L".";
    case Presence::State::kAway:
      return L"The settings service is away. What is shown may be out of date.";
    case Presence::State::kReturning:
      return L"The settings service is coming back. Reading its settings\x2026";
  }
  return {};
}

}  // namespace tool::panel
