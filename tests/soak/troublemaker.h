// What befalls the service while the application works: restarts, lost connections, garbled and
// late replies, at random.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>

#include "support/service_process.h"

namespace soak {

class Troublemaker {
 public:
  Troublemaker(support::ServiceProcess& service, uint32_t seed) : service(service), random(seed) {}

  // One trouble, over when this returns; the service behaves then.
  void MakeTrouble();
  // How often each was made.
  const std::map<std::string, int>& Made() const { return made; }

 private:
  void Pause(int leastMs, int mostMs);
  void While(const std::string& begin, const std::string& end, int leastMs, int mostMs);
  void Restart();
  void Type();

  support::ServiceProcess& service;
  std::mt19937 random;
  std::map<std::string, int> made;
};

}  // namespace soak
