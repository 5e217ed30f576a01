// What went wrong, from all threads; the first few in words.
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace soak {

class Findings {
 public:
  void Add(std::string finding);
  size_t Count() const;
  std::vector<std::string> First() const;

 private:
  mutable std::mutex mutex;
  std::vector<std::string> first;
  size_t count = 0;
};

}  // namespace soak
