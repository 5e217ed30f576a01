#include "clients/peer_client.h"

#include <string_view>
#include <utility>

#include "clients/batch.h"
#include "clients/pipes.h"
#include "support/system_failure.h"

namespace bench {
namespace {

constexpr DWORD kDrainTimeoutMs = 60'000;
constexpr const char* kTiltKey = R"(ComponentsDriver\PenHandler\PenTransducer\TiltSensitivity)";

std::string ToUtf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  std::string bytes(text.size() * 3, '\0');  // at most
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<size_t>(size));
  return bytes;
}

std::wstring ToUtf16(std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');  // at most
  const int length = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), size);
  text.resize(static_cast<size_t>(length));
  return text;
}

// The member's text is the key without its escapes.
std::string KeyOf(std::wstring_view keyInMessages) {
  return nlohmann::json::parse('"' + ToUtf8(keyInMessages) + '"').get<std::string>();
}

nlohmann::json Probe() {
  return {{"Connected", "?"}};
}

}  // namespace

PeerClient::PeerClient(Arrivals& arrivals)
    : Client(arrivals), drained(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  for (const std::wstring_view keyInMessages : RequestedKeys()) {
    const std::string key = KeyOf(keyInMessages);
    handlers[key] = [this, key](const std::string& value) {
      std::string& stored = values[key];
      if (value == stored) return;
      stored = value;
      this->arrivals.Arrived();
    };
  }
}

Sample PeerClient::Connect() {
  const Sample begin = Now();
  Pipes pipes = OpenPipes(FILE_FLAG_OVERLAPPED);
  DiscardQueue();
  announcements.pipe.assign(pipes.sendOnly.Release());
  duplex.pipe.assign(pipes.duplex.Release());
  queue.push_back({{}, ToUtf16(Probe().dump())});
  for (const std::wstring_view keyInMessages : RequestedKeys()) {
    const std::string key = KeyOf(keyInMessages);
    queue.push_back({key, ToUtf16(nlohmann::json{{"GetVal", key}}.dump())});
  }
  wantsDrained = true;
  thread = std::thread([this] {
    Receive(announcements, &PeerClient::TakeAnnouncement);
    SendNext();
    io.run();
  });
  return WaitDrained(begin);
}

void PeerClient::Disconnect() {
  if (!thread.joinable()) return;
  asio::post(io, [this] {
    announcements.pipe.close();
    duplex.pipe.close();
    io.stop();
  });
  thread.join();
  DiscardQueue();
}

// Takes in what was posted or cancelled while there was no thread, and forgets it.
void PeerClient::DiscardQueue() {
  isSending = true;
  io.restart();
  io.poll();
  io.restart();
  queue.clear();
  isSending = false;
  announcements.message.clear();
  duplex.message.clear();
}

void PeerClient::SetTilt(uint32_t value) {
  Enqueue({{kTiltKey, std::to_string(value)}}, {{"GetVal", kTiltKey}});
}

void PeerClient::Enqueue(nlohmann::json set, nlohmann::json request) {
  asio::post(io, [this, set = ToUtf16(set.dump()), request = ToUtf16(request.dump())] {
    queue.push_back({{}, set});
    queue.push_back({kTiltKey, request});
    if (!isSending) SendNext();
  });
}

Sample PeerClient::RunExchanges(size_t pairs) {
  Sample begin;
  asio::post(io, [this, pairs, &begin] {
    const std::wstring set =
        ToUtf16(nlohmann::json{{kTiltKey, std::to_string(kRestingTilt)}}.dump());
    const std::wstring request = ToUtf16(nlohmann::json{{"GetVal", kTiltKey}}.dump());
    for (size_t i = 0; i < pairs; ++i) {
      queue.push_back({{}, set});
      queue.push_back({kTiltKey, request});
    }
    queue.push_back({{}, ToUtf16(Probe().dump())});
    wantsDrained = true;
    begin = Now();
    SendNext();
  });
  WaitDrained({});
  return drainedAt - begin;
}

Sample PeerClient::WaitDrained(const Sample& begin) {
  Check(WaitForSingleObject(drained.Get(), kDrainTimeoutMs) == WAIT_OBJECT_0, "the peer's batch");
  return drainedAt - begin;
}

void PeerClient::Receive(Reader& reader, void (PeerClient::*take)(const nlohmann::json&)) {
  reader.pipe.async_read_some(asio::buffer(reader.piece),
                              [this, &reader, take](const asio::error_code& error, size_t size) {
                                const bool isPiece = error.value() == ERROR_MORE_DATA;
                                if (error && !isPiece) return;  // the connection is closed
                                reader.message.append(reader.piece.data(), size / sizeof(wchar_t));
                                if (isPiece) return Receive(reader, take);
                                const auto message =
                                    nlohmann::json::parse(ToUtf8(reader.message), nullptr, false);
                                reader.message.clear();
                                (this->*take)(message);
                                if (&reader == &announcements) Receive(reader, take);
                              });
}

void PeerClient::TakeAnnouncement(const nlohmann::json& message) {
  if (!message.is_object() || message.empty()) return;
  const auto member = message.begin();
  const auto handler = handlers.find(member.key());
  if (handler != handlers.end() && member->is_string()) {
    handler->second(member->get_ref<const std::string&>());
  }
}

void PeerClient::TakeReply(const nlohmann::json& message) {
  const Request request = std::move(queue.front());
  queue.pop_front();
  const auto value = message.is_object() ? message.find("Val") : message.end();
  const auto handler = handlers.find(request.key);
  if (handler != handlers.end() && value != message.end() && value->is_string()) {
    handler->second(value->get_ref<const std::string&>());
  }
  SendNext();
}

void PeerClient::SendNext() {
  isSending = !queue.empty();
  if (!isSending) {
    if (!std::exchange(wantsDrained, false)) return;
    drainedAt = Now();
    SetEvent(drained.Get());
    return;
  }
  asio::async_write(duplex.pipe, asio::buffer(queue.front().text),
                    [this](const asio::error_code& error, size_t) {
                      if (!error) Receive(duplex, &PeerClient::TakeReply);
                    });
}

}  // namespace bench
