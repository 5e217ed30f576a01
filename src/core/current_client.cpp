#include "core/current_client.h"

#include "platform/mutex.h"
#include "platform/thread_annotations.h"

namespace KorvuISD {
namespace {

LeafMutex g_clientMutex;

// Made when the library is loaded, and not destroyed when the process exits: by then the system has
// ended all other threads, wherever they were.
std::shared_ptr<SettingsClient>& g_client GUARDED_BY(g_clientMutex) =
    *new std::shared_ptr<SettingsClient>(std::make_shared<SettingsClient>(nullptr));

}  // namespace

std::shared_ptr<SettingsClient> CurrentClient() {
  const MutexLock lock(g_clientMutex);
  return g_client;
}

void SetAPIVersion(int32_t version) {
  const MutexLock lock(g_clientMutex);
  g_client->SetAPIVersion(version);
}

void ReplaceClient(const std::shared_ptr<SettingsClient>& old) {
  auto fresh = std::make_shared<SettingsClient>(old.get());
  const MutexLock lock(g_clientMutex);
  if (g_client != old) return;
  fresh->SetAPIVersion(old->APIVersion());  // it may have changed while the fresh one was made
  g_client.swap(fresh);
}

void ReleaseClient() {
  const MutexLock lock(g_clientMutex);
  delete &g_client;
}

}  // namespace KorvuISD
