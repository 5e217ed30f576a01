// Named pipes by name: the instances that servers have made, and which of them a client may take.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "kernel_lock.h"
#include "pipe_end.h"
#include "platform_double/types.h"
#include "status.h"

namespace platform_double {

class PipeName;

// What the first server says of a pipe.
struct PipeOfferTerms {
  bool isOfMessages;
  DWORD instances;
  DWORD defaultWaitMs;
};

class ServerEnd : public PipeEnd {
 public:
  ServerEnd(std::shared_ptr<PipeName> name, bool readsMessages, size_t inBytes, size_t outBytes);

  // Waits for a client, as an operation.
  Status Listen(const std::shared_ptr<Operation>& operation);
  Status Disconnect();
  void OnLastHandleClosed() override;

  // The client's end of this instance, connected.
  std::shared_ptr<PipeEnd> Accept();

 private:
  const std::shared_ptr<PipeName> name;
  const size_t outBytes;
};

// Lives as long as it has instances, or somebody who waits for one.
class PipeName {
 public:
  PipeName(std::wstring name, const PipeOfferTerms& terms);

  // Names are the same in upper and lower case.
  static bool IsOne(const std::wstring& name);
  // Null if there is no pipe of this name.
  static std::shared_ptr<PipeName> Find(const std::wstring& name);
  static std::shared_ptr<PipeName> FindOrMake(const std::wstring& name,
                                              const PipeOfferTerms& terms);

  const PipeOfferTerms& Terms() const { return terms; }
  size_t InstanceCount() const { return instances.size(); }

  void AddInstance(ServerEnd& server);
  void RemoveInstance(ServerEnd& server);

  // In the order in which they began to listen.
  void AddListener(ServerEnd& server);
  bool HasListener() const { return !listeners.empty(); }
  ServerEnd& TakeListener();

  Status WaitForListener(KernelLock& lock, const Deadline& deadline);

 private:
  void WakeAll();

  const std::wstring name;
  const PipeOfferTerms terms;
  std::vector<ServerEnd*> instances;
  std::deque<ServerEnd*> listeners;
  std::vector<Waiter*> waiters;
};

}  // namespace platform_double
