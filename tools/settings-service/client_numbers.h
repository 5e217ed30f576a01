// Which connections belong to one client.
#pragma once

#include <cstdint>
#include <map>

namespace tool::service {

enum class PipeSide { kSendOnly, kDuplex };

// A client opens both pipes, and nothing on them says so. Two connections of one process belong
// together, in the order of their coming. That is a guess where a process has several clients, so
// it serves to number the lines of the log and for nothing else.
class ClientNumbers {
 public:
  // The number of the client that has just connected on this side.
  uint32_t Connected(PipeSide side, uint32_t processId);
  void Disconnected(PipeSide side, uint32_t number);

 private:
  struct Client {
    uint32_t processId;
    bool hasSendOnly;
    bool hasDuplex;
  };

  static bool& Has(Client& client, PipeSide side);

  std::map<uint32_t, Client> clients;
  uint32_t lastNumber = 0;
};

}  // namespace tool::service
