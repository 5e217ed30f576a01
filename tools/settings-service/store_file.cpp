#include "settings-service/store_file.h"

#include <utility>

#include <fmt/core.h>

#include "settings-service/files.h"
#include "settings-service/system_error.h"

namespace tool::service {
namespace {

constexpr std::chrono::milliseconds kSaveDelay{200};

}  // namespace

StoreFile::StoreFile(std::string name, SettingsState& state, Log& log)
    : name(std::move(name)), state(state), log(log) {}

void StoreFile::Load() {
  if (name.empty()) return;
  if (const auto text = ReadFileIfPresent(name)) {
    try {
      unknown = ReadStore(*text, state);
      for (const auto& [key, value] : unknown) {
        log.Error(fmt::format("the store {} has a value for the unknown key {}", name, key));
      }
    } catch (const DamagedStore& damage) {
      const std::string aside = SetFileAside(name);
      log.Error(
          fmt::format("the store {} is damaged ({}); it was renamed to {}, and the settings are at "
                      "their defaults",
                      name, damage.what(), aside));
    }
  }
  Save();
}

void StoreFile::SaveIfDue(Time now) {
  if (name.empty()) return;
  if (state.Revision() == savedRevision) {
    due.reset();
  } else if (!due) {
    due = now + kSaveDelay;
  } else if (*due <= now) {
    // A failure was told; the next change or the end tries again.
    SaveNow();
    savedRevision = state.Revision();
    due.reset();
  }
}

bool StoreFile::SaveNow() {
  if (name.empty()) return true;
  try {
    Save();
    return true;
  } catch (const ServiceFailure& failure) {
    log.Error(fmt::format("the settings are not stored: {}", failure.what()));
    return false;
  }
}

void StoreFile::Save() {
  ReplaceFileWith(name, WriteStore(state, unknown));
  savedRevision = state.Revision();
}

}  // namespace tool::service
