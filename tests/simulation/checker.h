// One promise of the library, held against what happens in a life.
#pragma once

#include <string>

#include "event.h"

namespace simulation {

// Each is told everything, and looks at nothing else.
class Checker {
 public:
  explicit Checker(int promise) : promise(promise) {}
  virtual ~Checker() = default;
  virtual void On(const Happening& happening) = 0;

 protected:
  [[noreturn]] void Break(const std::string& how) const;

 private:
  const int promise;
};

}  // namespace simulation
