// One line of the trace, in memory that serves line after line.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string_view>
#include <vector>

namespace KorvuISD {

class TraceLine {
 public:
  // Makes the text, by the platform's wide printf rules. It is empty if the C runtime refuses the
  // format. Throws if there is no memory.
  void Format(const wchar_t* format, va_list arguments);

  bool IsEmpty() const { return length == 0; }
  const wchar_t* Text() const { return IsEmpty() ? L"" : line.data() + kStampRoom; }

  // A line that is not empty as the file has it, in UTF-8: time, process and thread of this moment,
  // then the text. Throws if there is no memory.
  std::string_view Stamped();

 private:
  // "09:05:17.042 -- 04242/07312 -- ", with identities of up to ten digits.
  static constexpr size_t kStampRoom = 48;

  std::vector<wchar_t> line;  // room for the stamp, the text, its terminator
  size_t length = 0;          // of the text
  std::vector<char> bytes;
};

}  // namespace KorvuISD
