// The peer: what a competent author would write without this library, on Asio's pipes and a JSON
// library, with a thread for the pipes, a queue, and a handler for each key.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <string>
#include <thread>
#include <unordered_map>

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <asio/windows/stream_handle.hpp>
#include <asio/write.hpp>
#include <nlohmann/json.hpp>

#include "clients/client.h"
#include "platform/unique_handle.h"

namespace bench {

class PeerClient final : public Client {
 public:
  explicit PeerClient(Arrivals& arrivals);
  ~PeerClient() override { Disconnect(); }

  Sample Connect() override;
  void Disconnect() override;
  void SetTilt(uint32_t value) override;
  Sample RunExchanges(size_t pairs) override;

 private:
  using Handler = std::function<void(const std::string& value)>;

  // Texts on the pipes, in pieces until a message is whole.
  struct Reader {
    explicit Reader(asio::io_context& io) : pipe(io) {}
    asio::windows::stream_handle pipe;
    std::array<wchar_t, 4096> piece;
    std::wstring message;
  };

  void Receive(Reader& reader, void (PeerClient::*take)(const nlohmann::json& message));
  void TakeAnnouncement(const nlohmann::json& message);
  void TakeReply(const nlohmann::json& message);
  void Enqueue(nlohmann::json set, nlohmann::json request);
  void SendNext();
  void DiscardQueue();
  Sample WaitDrained(const Sample& begin);

  std::unordered_map<std::string, Handler> handlers;
  std::unordered_map<std::string, std::string> values;

  asio::io_context io;
  Reader announcements{io};
  Reader duplex{io};
  std::thread thread;
  // Only on the thread, or while there is none.
  struct Request {
    std::string key;  // of a value request
    std::wstring text;
  };
  std::deque<Request> queue;
  bool isSending = false;
  bool wantsDrained = false;
  Sample drainedAt;
  KorvuISD::EventHandle drained;
};

}  // namespace bench
