// Display name to path of the applications that the service offers for a run-application button.
#pragma once

#include <map>
#include <string>

#include "platform/mutex.h"

namespace KorvuISD {

// The library's thread fills the map while any thread's setter looks into it, so it has a leaf lock
// of its own: a setter builds its messages before it takes the call frame's lock.
class ApplicationMap {
 public:
  using Paths = std::map<std::wstring, std::wstring>;

  // Runs `work` on all entries, under the lock.
  template <class Work>
  void Use(const Work& work) {
    const MutexLock lock(mutex);
    work(paths);
  }

  // The path to send for the text of an assignment: the one that the display name `text` stands
  // for, else `text` itself. A text that is not a display name enters the map with an empty path,
  // and so shows up in the next list of options.
  std::wstring PathToSend(const std::wstring& text) {
    const MutexLock lock(mutex);
    const std::wstring& path = paths[text];
    return path.empty() ? text : path;
  }

 private:
  LeafMutex mutex;
  Paths paths GUARDED_BY(mutex);
};

}  // namespace KorvuISD
