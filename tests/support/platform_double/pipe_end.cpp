#include "pipe_end.h"

#include <algorithm>
#include <utility>

namespace platform_double {

PipeEnd::PipeEnd(bool isOfMessages, bool readsMessages, size_t bufferBytes)
    : isOfMessages(isOfMessages), readsMessages(readsMessages), bufferBytes(bufferBytes) {}

Status PipeEnd::Read(const std::shared_ptr<Operation>& read) {
  switch (state) {
    case State::kListening:
      return Status::kPipeListening;
    case State::kDisconnected:
      return Status::kPipeDisconnected;
    case State::kClosing:
      if (incoming.empty()) return Status::kPipeBroken;
      break;
    case State::kConnected:
      break;
  }
  reads.push_back(read);
  Advance();
  return read->CurrentStatus();
}

Status PipeEnd::Write(const std::shared_ptr<Operation>& write, std::span<const char> bytes) {
  switch (state) {
    case State::kListening:
      return Status::kPipeListening;
    case State::kDisconnected:
      return Status::kPipeDisconnected;
    case State::kClosing:
      return Status::kPipeClosing;
    case State::kConnected:
      break;
  }
  Message& message = peer->incoming.emplace_back();
  message.bytes = bytes;
  message.write = write;
  message.sent.Pass();
  peer->Advance();
  return write->CurrentStatus();
}

Status PipeEnd::SetReadMode(bool messages) {
  if (messages && !isOfMessages) return Status::kInvalidParameter;
  readsMessages = messages;
  return Status::kSuccess;
}

bool PipeEnd::Cancel(const OVERLAPPED* overlapped) {
  const auto isWanted = [&](const std::shared_ptr<Operation>& operation) {
    return operation && (!overlapped || operation->Is(overlapped));
  };
  bool isFound = false;
  const auto end = [&](std::shared_ptr<Operation> operation) {
    isFound = true;
    operation->End(Status::kCancelled);
  };
  if (isWanted(listening)) end(std::move(listening));
  std::erase_if(reads, [&](const auto& read) { return isWanted(read) && (end(read), true); });
  if (peer) {
    std::erase_if(peer->incoming, [&](const Message& message) {
      return isWanted(message.write) && (end(message.write), true);
    });
    peer->Advance();
  }
  return isFound;
}

void PipeEnd::Cut(Status status) {
  state = status == Status::kPipeDisconnected ? State::kDisconnected : State::kClosing;
  if (listening) std::exchange(listening, nullptr)->End(status);
  for (const auto& read : std::exchange(reads, {})) read->End(status);
  for (const Message& message : incoming) {
    if (message.write) message.write->End(status);
  }
  // What its writer knows as sent stays to be read, unless the connection is thrown away.
  std::erase_if(incoming, [&](const Message& message) {
    return message.write || status == Status::kPipeDisconnected;
  });
  if (PipeEnd* const other = std::exchange(peer, nullptr)) {
    other->peer = nullptr;
    other->Cut(status);
  }
}

void PipeEnd::ConnectTo(PipeEnd& client) {
  static size_t connectionCount = 0;
  connection = client.connection = ++connectionCount;
  state = client.state = State::kConnected;
  incoming.clear();
  peer = &client;
  client.peer = this;
  if (listening) std::exchange(listening, nullptr)->End(Status::kSuccess);
}

void PipeEnd::Advance() {
  ServeReads();
  EndWritesWithRoom();
}

void PipeEnd::ServeReads() {
  while (!reads.empty() && !incoming.empty()) {
    const std::shared_ptr<Operation> read = std::move(reads.front());
    reads.pop_front();
    readsMessages ? ReadMessage(*read) : ReadStream(*read);
  }
}

void PipeEnd::ReadMessage(Operation& read) {
  const bool isWhole = incoming.front().LeftBytes() <= read.Capacity();
  ReadPiece(read, read.Capacity());
  read.End(isWhole ? Status::kSuccess : Status::kMoreData);
}

void PipeEnd::ReadStream(Operation& read) {
  size_t capacity = read.Capacity();
  do {
    const size_t piece = std::min(capacity, incoming.front().LeftBytes());
    ReadPiece(read, capacity);
    capacity -= piece;
  } while (capacity > 0 && !incoming.empty());
  read.End(Status::kSuccess);
}

void PipeEnd::ReadPiece(Operation& read, size_t capacity) {
  Message& message = incoming.front();
  const size_t piece = std::min(capacity, message.LeftBytes());
  message.sent.Take();
  read.Fill(message.bytes.subspan(message.readBytes, piece));
  message.readBytes += piece;
  if (message.LeftBytes() > 0) return;
  if (message.write) message.write->End(Status::kSuccess, message.bytes.size());
  incoming.pop_front();
}

void PipeEnd::EndWritesWithRoom() {
  size_t heldBytes = 0;
  for (Message& message : incoming) {
    heldBytes += message.LeftBytes();
    if (message.write && (heldBytes <= bufferBytes || message.bytes.empty())) {
      message.Keep();
    }
  }
}

void PipeEnd::Message::Keep() {
  sent.Take();
  {
    const InSightOfSanitizer shown;
    kept.assign(bytes.begin(), bytes.end());
  }
  bytes = kept;
  sent.Pass();
  std::exchange(write, nullptr)->End(Status::kSuccess, bytes.size());
}

}  // namespace platform_double
