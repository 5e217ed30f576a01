// Scripts: commands that are run at their time.
//
//   # Lines that begin with # are comments.
//   500ms  announce TiltSensitivity 20     half a second after the service is ready
//   +1.5s  pen 4E7A10C3 100237 in          one and a half seconds after the line before
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "settings-service/catalogue.h"
#include "settings-service/commands.h"

namespace tool::service {

struct ScriptLine {
  std::chrono::milliseconds time;  // since the service was ready; never before that of the last
  int number;
  Command command;
};

struct Script {
  std::vector<ScriptLine> lines;
  std::vector<std::string> errors;  // each begins with its line's number
};

// `text` is UTF-8. With errors, do not run the lines.
Script ParseScript(std::string_view text, const Catalogue& catalogue);

}  // namespace tool::service
