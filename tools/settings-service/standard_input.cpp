#include "settings-service/standard_input.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include <windows.h>

#include "settings-service/text.h"
#include "shared/start_thread.h"

namespace tool::service {
namespace {

constexpr size_t kMostWaiting = 1000;
constexpr wchar_t kEndKey = L'\x1A';  // Ctrl+Z at the beginning of a line

// The next piece of input as UTF-8; nothing at its end.
std::optional<std::string> ReadConsolePiece(HANDLE console) {
  std::array<wchar_t, 1024> buffer;
  for (;;) {
    DWORD codeUnits = 0;
    SetLastError(ERROR_SUCCESS);
    if (!ReadConsoleW(console, buffer.data(), static_cast<DWORD>(buffer.size()), &codeUnits,
                      nullptr)) {
      return std::nullopt;
    }
    // Ctrl+C ends a read without anything read; it is not the end of the input.
    if (codeUnits == 0 && GetLastError() == ERROR_OPERATION_ABORTED) continue;
    const std::wstring_view piece(buffer.data(), codeUnits);
    if (piece.empty() || piece.front() == kEndKey) return std::nullopt;
    return ToUtf8(piece);
  }
}

std::optional<std::string> ReadFilePiece(HANDLE file) {
  std::array<char, 4096> buffer;
  DWORD byteCount = 0;
  if (!ReadFile(file, buffer.data(), static_cast<DWORD>(buffer.size()), &byteCount, nullptr) ||
      byteCount == 0) {
    return std::nullopt;
  }
  return std::string(buffer.data(), byteCount);
}

}  // namespace

void StandardInput::Lines::Add(std::string line) {
  if (line.ends_with('\r')) line.pop_back();
  {
    std::unique_lock lock(mutex);
    hasRoom.wait(lock, [&] { return waiting.size() < kMostWaiting; });
    waiting.push_back(std::move(line));
  }
  port->Wake();
}

void StandardInput::Lines::End() {
  {
    const std::lock_guard lock(mutex);
    hasEnded = true;
  }
  port->Wake();
}

std::optional<std::string> StandardInput::Lines::Take() {
  const std::lock_guard lock(mutex);
  if (waiting.empty()) return std::nullopt;
  std::string line = std::move(waiting.front());
  waiting.pop_front();
  hasRoom.notify_one();
  return line;
}

bool StandardInput::Lines::AreAtEnd() {
  const std::lock_guard lock(mutex);
  return hasEnded && waiting.empty();
}

StandardInput::StandardInput(std::shared_ptr<CompletionPort> port)
    : lines(std::make_shared<Lines>(std::move(port))) {
  StartThread([shared = lines] {
    Read(*shared);
    shared->End();
  });
}

std::optional<std::string> StandardInput::TakeLine() {
  return lines->Take();
}

bool StandardInput::IsAtEnd() {
  return lines->AreAtEnd();
}

void StandardInput::Read(Lines& lines) {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  if (!input || input == INVALID_HANDLE_VALUE) return;  // a program that has none
  DWORD mode = 0;
  const bool isConsole = GetConsoleMode(input, &mode) != 0;

  std::string line;
  while (const auto piece = isConsole ? ReadConsolePiece(input) : ReadFilePiece(input)) {
    for (const char c : *piece) {
      if (c == '\n') {
        lines.Add(std::exchange(line, {}));
      } else {
        line.push_back(c);
      }
    }
  }
  if (!line.empty()) lines.Add(std::move(line));
}

}  // namespace tool::service
