#include "settings-service/client_numbers.h"

namespace tool::service {

bool& ClientNumbers::Has(Client& client, PipeSide side) {
  return side == PipeSide::kSendOnly ? client.hasSendOnly : client.hasDuplex;
}

uint32_t ClientNumbers::Connected(PipeSide side, uint32_t processId) {
  for (auto& [number, client] : clients) {
    if (client.processId != processId || Has(client, side)) continue;
    Has(client, side) = true;
    return number;
  }
  Client& client = clients[++lastNumber];
  client.processId = processId;
  Has(client, side) = true;
  return lastNumber;
}

void ClientNumbers::Disconnected(PipeSide side, uint32_t number) {
  const auto client = clients.find(number);
  if (client == clients.end()) return;
  Has(client->second, side) = false;
  if (!client->second.hasSendOnly && !client->second.hasDuplex) clients.erase(client);
}

}  // namespace tool::service
