// The service's log: on standard error, and in a file where one is given. One thread's.
#pragma once

#include <string>
#include <string_view>

#include "platform/unique_handle.h"

namespace tool::service {

class Log {
 public:
  Log(bool isVerbose, const std::string& fileName);

  bool IsVerbose() const { return isVerbose; }

  // What went wrong.
  void Error(std::string_view text);

  // The same, where the user has been told: in the file only.
  void ErrorAlreadyTold(std::string_view text);

  // What happens; only when verbose.
  void Note(std::string_view text);

 private:
  void Write(const std::string& line);
  void WriteToFile(std::string_view line);

  const bool isVerbose;
  KorvuISD::UniqueHandle<KorvuISD::FileHandleTraits> file;
};

}  // namespace tool::service
