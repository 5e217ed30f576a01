// Whole files. Names are UTF-8. Failures are ServiceFailure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tool::service {

// Nothing if there is no such file.
std::optional<std::string> ReadFileIfPresent(const std::string& name);

std::string ReadWholeFile(const std::string& name);

// The file holds either what it held or all of `text`, whenever the machine stops.
void ReplaceFileWith(const std::string& name, std::string_view text);

// Gives the file a name of its own beside the old one, and returns that.
std::string SetFileAside(const std::string& name);

}  // namespace tool::service
