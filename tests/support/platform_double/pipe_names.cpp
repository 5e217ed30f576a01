#include "pipe_names.h"

#include <algorithm>
#include <cwctype>
#include <map>
#include <utility>

namespace platform_double {
namespace {

// Never destroyed: threads may outlive the static objects.
std::map<std::wstring, std::shared_ptr<PipeName>>& Names() {
  static auto& names = *new std::map<std::wstring, std::shared_ptr<PipeName>>;
  return names;
}

std::wstring InLowerCase(std::wstring name) {
  std::ranges::transform(name, name.begin(), [](wchar_t unit) {
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
  });
  return name;
}

}  // namespace

ServerEnd::ServerEnd(std::shared_ptr<PipeName> name, bool readsMessages, size_t inBytes,
                     size_t outBytes)
    : PipeEnd(name->Terms().isOfMessages, readsMessages, inBytes),
      name(std::move(name)),
      outBytes(outBytes) {}

Status ServerEnd::Listen(const std::shared_ptr<Operation>& operation) {
  switch (state) {
    case State::kConnected:
      return Status::kPipeConnected;
    case State::kClosing:
      return Status::kPipeClosing;
    case State::kListening:
      break;
    case State::kDisconnected:
      state = State::kListening;
      name->AddListener(*this);
      break;
  }
  listening = operation;
  return Status::kPending;
}

Status ServerEnd::Disconnect() {
  if (state == State::kListening) return Status::kPipeListening;
  if (state == State::kDisconnected) return Status::kPipeDisconnected;
  Cut(Status::kPipeDisconnected);
  return Status::kSuccess;
}

void ServerEnd::OnLastHandleClosed() {
  name->RemoveInstance(*this);
  PipeEnd::OnLastHandleClosed();
}

std::shared_ptr<PipeEnd> ServerEnd::Accept() {
  // Until it asks for something else, a client reads a stream.
  auto client = std::make_shared<PipeEnd>(name->Terms().isOfMessages, false, outBytes);
  ConnectTo(*client);
  return client;
}

PipeName::PipeName(std::wstring name, const PipeOfferTerms& terms)
    : name(std::move(name)), terms(terms) {}

bool PipeName::IsOne(const std::wstring& name) {
  return InLowerCase(name).starts_with(LR"(\\.\pipe\)");
}

std::shared_ptr<PipeName> PipeName::Find(const std::wstring& name) {
  const auto found = Names().find(InLowerCase(name));
  return found == Names().end() ? nullptr : found->second;
}

std::shared_ptr<PipeName> PipeName::FindOrMake(const std::wstring& name,
                                               const PipeOfferTerms& terms) {
  if (auto found = Find(name)) return found;
  const std::wstring key = InLowerCase(name);
  return Names()[key] = std::make_shared<PipeName>(key, terms);
}

void PipeName::AddInstance(ServerEnd& server) {
  instances.push_back(&server);
  AddListener(server);
}

void PipeName::RemoveInstance(ServerEnd& server) {
  std::erase(instances, &server);
  std::erase(listeners, &server);
  if (!instances.empty()) return;
  Names().erase(name);
  WakeAll();
}

void PipeName::AddListener(ServerEnd& server) {
  listeners.push_back(&server);
  WakeAll();
}

ServerEnd& PipeName::TakeListener() {
  ServerEnd& server = *listeners.front();
  listeners.pop_front();
  return server;
}

Status PipeName::WaitForListener(KernelLock& lock, const Deadline& deadline) {
  Waiter waiter;
  waiters.push_back(&waiter);
  Status status = Status::kPending;
  for (bool isOver = false; status == Status::kPending;) {
    if (instances.empty()) {
      status = Status::kNameNotFound;
    } else if (HasListener()) {
      status = Status::kSuccess;
    } else if (isOver) {
      status = Status::kTimeout;
    } else {
      isOver = !lock.Wait(waiter, deadline);
    }
  }
  std::erase(waiters, &waiter);
  return status;
}

void PipeName::WakeAll() {
  for (Waiter* const waiter : waiters) waiter->Wake();
}

}  // namespace platform_double
