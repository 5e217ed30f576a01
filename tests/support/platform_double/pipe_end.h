// One end of a named pipe: what has been sent to it, and the reads that wait for it.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <span>
#include <vector>

#include "object.h"
#include "operation.h"
#include "status.h"

namespace platform_double {

class PipeEnd : public Object {
 public:
  // `bufferBytes` is what may lie at this end before a write to it pends.
  PipeEnd(bool isOfMessages, bool readsMessages, size_t bufferBytes);

  // Each answers how it ended, or that it pends.
  Status Read(const std::shared_ptr<Operation>& read);
  Status Write(const std::shared_ptr<Operation>& write, std::span<const char> bytes);

  Status SetReadMode(bool messages);

  // Withdraws the operation of `overlapped`, or all if null. False if there is none.
  bool Cancel(const OVERLAPPED* overlapped);

  // Both ends part. Closing leaves what was sent to be read; disconnecting does not.
  void Cut(Status status);
  void OnLastHandleClosed() override { Cut(Status::kPipeBroken); }

  // The same at both ends; stays after they have parted. 0: never connected.
  size_t Connection() const { return connection; }

 protected:
  enum class State { kListening, kConnected, kDisconnected, kClosing };

  void ConnectTo(PipeEnd& client);

  State state = State::kListening;
  // A server's wait for a client.
  std::shared_ptr<Operation> listening;

 private:
  struct Message {
    size_t LeftBytes() const { return bytes.size() - readBytes; }
    // Ends the write: from now on the writer may do with its memory what it likes.
    void Keep();

    // The writer's own memory as long as its write is under way, as the platform may use it.
    std::span<const char> bytes;
    std::vector<char> kept;
    size_t readBytes = 0;
    std::shared_ptr<Operation> write;  // none once it has ended
    SyncPoint sent;
  };

  // The reads that can end, and then the writes that now have room.
  void Advance();
  void ServeReads();
  void ReadMessage(Operation& read);
  void ReadStream(Operation& read);
  // As much of the first message as the read takes.
  void ReadPiece(Operation& read, size_t capacity);
  void EndWritesWithRoom();

  const bool isOfMessages;
  size_t connection = 0;
  bool readsMessages;
  const size_t bufferBytes;
  // Both ends know each other until they are cut, which the first one to be closed does.
  PipeEnd* peer = nullptr;
  std::list<Message> incoming;
  std::list<std::shared_ptr<Operation>> reads;
};

}  // namespace platform_double
