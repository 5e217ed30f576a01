// What a connection has brought of one setting, and whether what was called back can come of it.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace simulation {

// The announcements and the replies of a connection come in two pipes. Each keeps its order; how
// the two mix is the library's choice. A value that is the last one again is not called back.
class Streams {
 public:
  explicit Streams(std::wstring first) : states{{0, 0, std::move(first)}} {}

  // A new connection: what was under way is lost.
  void Restart();
  void Announced(const std::wstring& value) { announced.push_back(value); }
  void Replied(const std::wstring& value) { replied.push_back(value); }

  // False if that cannot be.
  bool CalledBack(const std::wstring& value);
  // Can all that has been brought have come in?
  bool IsAllIn();

 private:
  struct State {
    size_t announced;
    size_t replied;
    std::wstring last;
    bool operator<(const State& other) const {
      return std::tie(announced, replied, last) <
             std::tie(other.announced, other.replied, other.last);
    }
  };

  // With repetitions taken in.
  std::set<State> Reachable() const;

  std::set<State> states;
  std::vector<std::wstring> announced;
  std::vector<std::wstring> replied;
};

}  // namespace simulation
